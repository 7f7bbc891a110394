import QtQuick 2.15
import "../controls"
import "../theme"

// Covers one end of the row of tabs and shows that there are more in that direction.
Rectangle {
    id: fade

    property bool mirrored: false

    width: 44
    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: fade.mirrored ? "transparent" : Theme.bar
        }
        GradientStop {
            position: 0.5
            color: Theme.bar
        }
        GradientStop {
            position: 1
            color: fade.mirrored ? Theme.bar : "transparent"
        }
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        x: fade.mirrored ? parent.width - width - 6 : 6
        text: fade.mirrored ? "\u203a" : "\u2039"
        font.pixelSize: 20
        color: Theme.quietText
    }
}
