#pragma once

/// Window geometry is kept in twips, 1440 to the inch, at the usual 96 logical pixels to the inch. Logical pixels stay
/// the same at every screen scale, and so do the numbers in the settings.
inline constexpr int kTwipsPerPixel = 15;

constexpr int PixelsFromTwips(int twips)
{
    return twips / kTwipsPerPixel;
}

constexpr int TwipsFromPixels(int pixels)
{
    return pixels * kTwipsPerPixel;
}
