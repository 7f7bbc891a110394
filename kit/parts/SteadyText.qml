import QtQuick 2.15

// Lets a text that changes with every sweep change only so often that it can be read.
QtObject {
    id: steady

    property string source
    // Milliseconds between changes, 0 to pass all of them on.
    property int interval: 0
    // A change of this is the user's: the text follows at once.
    property var key
    property string text

    property Timer pause: Timer {
        interval: steady.interval
        onTriggered: steady.update()
    }

    function update() {
        if (text === source)
            return;
        text = source;
        if (interval > 0)
            pause.restart();
    }

    onSourceChanged: if (!pause.running) update()
    onKeyChanged: {
        pause.stop();
        // Other results of the same change of the key are still on their way.
        Qt.callLater(update);
    }
}
