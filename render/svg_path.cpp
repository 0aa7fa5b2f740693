#include "render/svg_path.h"

#include <array>

namespace korvinth::render {
namespace {

class PathText
{
public:
    // What a command adds to the text.
    std::string Piece(char command, std::span<const int> numbers) const
    {
        std::string piece;
        if (command != command_) piece += command;
        for (const int number : numbers) {
            const bool after_digit = !piece.empty() ? piece.back() <= '9' : !text_.empty();
            if (after_digit && number >= 0) piece += ' ';
            piece += std::to_string(number);
        }
        return piece;
    }

    void Add(char command, const std::string& piece)
    {
        text_ += piece;
        command_ = command;
    }

    void Add(char command, std::span<const int> numbers) { Add(command, Piece(command, numbers)); }

    // The shorter of a distance and a place.
    void AddLine(char relative, std::span<const int> distance, char absolute,
                 std::span<const int> place)
    {
        const std::string by = Piece(relative, distance);
        const std::string to = Piece(absolute, place);
        if (by.size() <= to.size()) {
            Add(relative, by);
        } else {
            Add(absolute, to);
        }
    }

    const std::string& Text() const { return text_; }

private:
    std::string text_;
    char command_ = 0;
};

}  // namespace

std::string SvgPath(std::span<const GridPoint> points, int shift)
{
    PathText path;
    GridPoint at{points.front().x + shift, points.front().y + shift};
    path.Add('M', std::array{at.x, at.y});
    for (const GridPoint& point : points.subspan(1)) {
        const GridPoint to{point.x + shift, point.y + shift};
        const int dx = to.x - at.x;
        const int dy = to.y - at.y;
        if (dy == 0) {
            path.AddLine('h', std::array{dx}, 'H', std::array{to.x});
        } else if (dx == 0) {
            path.AddLine('v', std::array{dy}, 'V', std::array{to.y});
        } else {
            path.AddLine('l', std::array{dx, dy}, 'L', std::array{to.x, to.y});
        }
        at = to;
    }
    return path.Text();
}

}  // namespace korvinth::render
