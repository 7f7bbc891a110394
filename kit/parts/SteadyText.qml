import QtQuick 2.15

/*! \brief Lets a text that changes with every sweep change only so often that it can be read.
*/
QtObject {
    id: steady

    /*! The text that changes. */
    property string source
    /*! Milliseconds between changes, 0, the default, to pass all of them on. */
    property int interval: 0
    /*! A change of this, for example the position of a cursor, is the user's: the text follows at once. */
    property var key
    /*! The text that changes at most every interval. */
    property string text

    /*! \internal */
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
