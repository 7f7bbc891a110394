import QtQuick 2.15
import QtTest 1.2
import graph_plugin 1.0
import graph_kit 1.0

TestCase {
    name: "installed"

    Component {
        id: chart

        GraphView {
            axes: ValueAxis { labelsPlane: plane; linesPlane: plane }

            XYScale { id: plane }
            ZoomArea {}
        }
    }

    function test_loads() {
        verify(createTemporaryObject(chart, this));
    }
}
