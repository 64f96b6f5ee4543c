#include "sectrix_tools/drawings/svg/label_placement.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qel::SectrixTools::Pictures {
namespace {

bool Overlap(Box const& a, Box const& b) {
    return a.m_low.x < b.m_high.x && b.m_low.x < a.m_high.x && a.m_low.y < b.m_high.y && b.m_low.y < a.m_high.y;
}

bool Holds(Box const& outer, Box const& inner) {
    return inner.m_low.x >= outer.m_low.x && inner.m_high.x <= outer.m_high.x && inner.m_low.y >= outer.m_low.y &&
           inner.m_high.y <= outer.m_high.y;
}

/// True when the segment has a point in the box: the box leaves, of the segment's parameter range 0 to 1,
/// something.
bool Crosses(Segment const& segment, Box const& box) {
    double first = 0.0;
    double last = 1.0;
    auto const clip = [&](double from, double to, double low, double high) {
        double const step = to - from;
        if (step == 0) {
            if (from < low || from > high)
                last = -1.0;
            return;
        }
        double const a = (low - from) / step;
        double const b = (high - from) / step;
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
    };
    clip(segment.first.x, segment.second.x, box.m_low.x, box.m_high.x);
    clip(segment.first.y, segment.second.y, box.m_low.y, box.m_high.y);
    return first <= last;
}

/// The box of a text of this size that stands `distance` off a point, in the direction (x, y).
Box TextBox(Point point, Point direction, double distance, Point size) {
    Point const centre{point.x + direction.x * (distance + size.x / 2),
                       point.y + direction.y * (distance + size.y / 2)};
    return {{centre.x - size.x / 2, centre.y - size.y / 2}, {centre.x + size.x / 2, centre.y + size.y / 2}};
}

/// How much a text in the box would be in the way; infinite where it may not stand.
double Cost(Box const& box, Box const& page, std::vector<Box> const& taken, std::vector<Segment> const& lines) {
    bool const barred = !Holds(page, box) || std::any_of(taken.begin(), taken.end(),
                                                         [&](Box const& other) { return Overlap(box, other); });
    if (barred)
        return std::numeric_limits<double>::infinity();
    return static_cast<double>(
        std::count_if(lines.begin(), lines.end(), [&](Segment const& line) { return Crosses(line, box); }));
}

} // namespace

void PlaceLabels(std::vector<Label>& labels, double fontSize, Box page, Box shape, std::vector<Box> taken,
                 std::vector<Segment> const& lines) {
    constexpr double kMark = 6.0;        // half the room that the mark of a point takes
    constexpr double kNear = 10.0;       // beyond this a text takes a leader
    constexpr double kWorthALine = 25.0; // so much further off a text would rather stand than cover a line
    constexpr double kInward = 0.4;      // what standing towards the middle costs, against 1 for a line covered
    Point const middle{shape.m_low.x / 2 + shape.m_high.x / 2, shape.m_low.y / 2 + shape.m_high.y / 2};
    for (Label const& label : labels)
        taken.push_back({{label.m_point.x - kMark, label.m_point.y - kMark},
                         {label.m_point.x + kMark, label.m_point.y + kMark}});

    for (Label& label : labels) {
        Point const size{Svg::TextWidth(label.m_text, fontSize), 1.2 * fontSize};
        double least = std::numeric_limits<double>::infinity();
        Box best{};
        for (double const distance : {7.0, 13.0, 20.0, 30.0, 44.0})
            for (Point const direction : {Point{0, -1}, Point{0, 1}, Point{1, 0}, Point{-1, 0}, Point{1, -1},
                                          Point{-1, -1}, Point{1, 1}, Point{-1, 1}}) {
                Box const box = TextBox(label.m_point, direction, distance, size);
                bool const inward = direction.x * (label.m_point.x - middle.x) < 0 ||
                                    direction.y * (label.m_point.y - middle.y) < 0;
                double const cost =
                    Cost(box, page, taken, lines) + distance / kWorthALine + (inward ? kInward : 0.0);
                if (cost < least) {
                    least = cost;
                    best = box;
                    label.m_far = distance > kNear;
                }
            }
        label.m_placed = std::isfinite(least);
        if (!label.m_placed)
            continue;
        taken.push_back(best);
        label.m_baseline = {best.m_low.x / 2 + best.m_high.x / 2, best.m_high.y - 0.3 * fontSize};
        label.m_leaderEnd = {std::clamp(label.m_point.x, best.m_low.x, best.m_high.x),
                             std::clamp(label.m_point.y, best.m_low.y, best.m_high.y)};
    }
}

} // namespace qel::SectrixTools::Pictures
