import QtQuick 2.15
import "../theme"

Text {
    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.bodyText
    renderType: Text.NativeRendering
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
}
