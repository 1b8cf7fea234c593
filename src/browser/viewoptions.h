#pragma once

/// Which class of format the tree is limited to; the values are the positions in the Filter menu.
enum class ViewFilter { All = 0, LosslessOnly = 1, LossyOnly = 2, NeedLossless = 3, DoNotHave = 4 };

/// What the user chose to see in the tree, besides the types (ShownTypes).
struct ViewOptions
{
    ViewFilter filter = ViewFilter::All;
    bool showWrongDate = true;
    bool showYearTotals = true;
};
