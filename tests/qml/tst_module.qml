import QtQuick 2.15
import QtTest 1.15
import graph_plugin 1.0

TestCase {
    name: "module"

    Component {
        id: line
        Test {}
    }

    function test_loads() {
        const item = createTemporaryObject(line, this)
        verify(item)
        compare(item.width, 0)
    }
}
