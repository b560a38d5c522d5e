#pragma once

#include <cmath>

#include <QColor>

#include "platform/colour.h"

// Layout figures of the models are twips; the screen has 15 of them to a
// pixel at 96 dots an inch.
namespace parvenna::ui {

inline constexpr double kTwipsPerPixel = 15.0;

inline int Px(double twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }
inline double PxF(double twips) { return twips / kTwipsPerPixel; }
inline double Twips(int pixels) { return pixels * kTwipsPerPixel; }

inline QColor ToQColor(Rgb c) { return QColor(c.r, c.g, c.b); }

}  // namespace parvenna::ui
