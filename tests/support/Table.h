#pragma once

#include <QtTest>

// The columns of a test's data table by type and name.
template <typename... Types> void columns(std::initializer_list<const char *> names)
{
    auto name = names.begin();
    (QTest::addColumn<Types>(*name++), ...);
}
