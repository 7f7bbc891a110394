import QtQuick 2.15
import "../theme"

// A selector with a name in front, for choices that do not explain themselves.
Row {
    property alias name: name.text
    property alias choices: selector.choices
    property alias currentIndex: selector.currentIndex

    spacing: Theme.compact ? 6 : 8

    Label {
        id: name

        height: parent.height
        font.pixelSize: Theme.smallText
        color: Theme.quietText
    }

    SegmentedSelector {
        id: selector

        onActivated: function(index) { currentIndex = index; }
    }
}
