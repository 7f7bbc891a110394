#include <QtQuickTest>

QUICK_TEST_MAIN(graph_plugin)
