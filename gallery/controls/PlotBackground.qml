import QtQuick 2.15
import "../theme"

// As a child of a view it covers the plot area.
Rectangle {
    color: Theme.plotArea
    border.color: Theme.graticule
}
