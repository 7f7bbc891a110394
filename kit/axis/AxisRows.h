#pragma once

namespace graph {

// Which rows of text there are beside a plot area, from all of them to none: the less room there is, the fewer.
enum class AxisRows {
    All,
    WithoutUnits, // which are in the rows of the numbers
    WithoutTitles,
    None,
};

} // namespace graph
