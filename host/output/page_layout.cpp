#include "host/output/page_layout.h"

#include <algorithm>

namespace qsvtin {

namespace {

constexpr double kLongSide = 842.0, kShortSide = 595.0;   // A4
constexpr double kMargin = 26.0;
constexpr double kTitle = 44.0;       // height of the title above the map
constexpr double kTicksLeft = 16.0;   // room for the coordinates along the map's sides
constexpr double kTicksBelow = 16.0;
constexpr double kFooter = 34.0;
constexpr double kLegend = 88.0;       // width of the column right of the map
constexpr double kLeastSide = 180.0;   // of the map, however long and narrow the terrain is

constexpr double kBesideMap = 2.0 * kMargin + kTicksLeft + kLegend;
constexpr double kAboveAndBelowMap = 2.0 * kMargin + kTitle + kTicksBelow + kFooter;

// The part of the plan that the map shows: the terrain and a little around it.
struct Extent {
    double width;
    double height;
};

double ScaleOnPage(const Extent& extent, double pageWidth, double pageHeight)
{
    return std::min((pageWidth - kBesideMap) / extent.width,
                    (pageHeight - kAboveAndBelowMap) / extent.height);
}

}   // namespace

PageLayout LayOutPage(const PlanView& view, bool wholePage)
{
    const double width = view.high.x - view.low.x, height = view.high.y - view.low.y;
    const double around = 0.03 * std::max(width, height);
    const Extent extent{width + 2.0 * around, height + 2.0 * around};
    const double lying = ScaleOnPage(extent, kLongSide, kShortSide);
    const double upright = ScaleOnPage(extent, kShortSide, kLongSide);
    const double scale = std::max(lying, upright);
    const double pageWidth = upright > lying ? kShortSide : kLongSide;
    const double pageHeight = upright > lying ? kLongSide : kShortSide;

    PageLayout page;
    page.map.width = std::max(kLeastSide, extent.width * scale);
    page.map.height = std::max(kLeastSide, extent.height * scale);
    const double usedWidth = page.map.width + kBesideMap, usedHeight = page.map.height + kAboveAndBelowMap;
    page.width = wholePage ? pageWidth : usedWidth;
    page.height = wholePage ? pageHeight : usedHeight;
    page.map.left = (page.width - usedWidth) / 2.0 + kMargin + kTicksLeft;
    page.map.top = (page.height - usedHeight) / 2.0 + kMargin + kTitle;
    page.title = {page.map.left, page.map.top - kTitle, page.map.width + kLegend, kTitle};
    page.legend = {page.map.Right(), page.map.top, kLegend, page.map.height};
    page.footer = {page.map.left, page.map.Bottom() + kTicksBelow, page.map.width + kLegend, kFooter};
    page.mapWest = (view.low.x + view.high.x - page.map.width / scale) / 2.0;
    page.mapNorth = (view.low.y + view.high.y + page.map.height / scale) / 2.0;
    page.toPage = {page.mapWest - page.map.left / scale, page.mapNorth + page.map.top / scale, scale};
    return page;
}

}   // namespace qsvtin
