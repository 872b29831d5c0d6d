#pragma once

#include "image/DibTypes.h"
#include "platform/HeapBlock.h"

#include <cstdint>

class CDibImage;

// Builds a palette for a true-colour picture with Wu's variance-minimising
// box cut: a 32 x 32 x 32 colour histogram with cumulative moments, split
// again and again at the plane that most reduces the summed squared error,
// each final box contributing its mean colour.
class WuQuantizer {
public:
    WuQuantizer();
    bool IsValid() const { return static_cast<bool>(m_moments); }

    // False when the work row could not be allocated.
    bool AddPicture(const CDibImage& picture);
    // Fills `palette` with up to `wanted` colours (the rest black) and
    // returns how many were made.
    int BuildPalette(RgbQuad* palette, int wanted);

private:
    struct Box;
    struct Moment;
    enum Axis { kRed, kGreen, kBlue };

    void Accumulate();
    bool Cut(Box& first, Box& second) const;
    double Maximize(const Box& box, Axis axis, int lo, int hi, int& cut, const Moment& whole) const;
    double Variance(const Box& box) const;
    Moment Volume(const Box& box) const;
    Moment Bottom(const Box& box, Axis axis) const;
    Moment Top(const Box& box, Axis axis, int position) const;
    const Moment& At(int r, int g, int b) const;

    platform::HeapBlock m_moments; // 33^3 Moment records
};
