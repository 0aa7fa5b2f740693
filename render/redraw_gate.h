// Holds redraws back while several things change, so that the picture is drawn once afterwards.
#pragma once

#include <cstdint>

namespace korvinth::render {

class RedrawGate
{
public:
    bool Open() const { return closed_ == 0; }

    // No redraw while one of these lives; they nest.
    class Suppression
    {
    public:
        explicit Suppression(RedrawGate& gate) : gate_(gate) { ++gate_.closed_; }
        ~Suppression() { --gate_.closed_; }
        Suppression(const Suppression&) = delete;
        Suppression& operator=(const Suppression&) = delete;

    private:
        RedrawGate& gate_;
    };

private:
    std::int16_t closed_ = 0;
};

}  // namespace korvinth::render
