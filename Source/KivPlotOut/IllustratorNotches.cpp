#include "IllustratorNotches.h"

#include "IllustratorPrimitives.h"

#include "KivMarker/GeneralPlotOptions.h"

#include <cmath>

namespace KivSystem {
namespace KivIllustrator {
namespace {

constexpr double kNothing = 1e-12; // cm

double notchFactor()
{
    return CDbGeneralPlotOptions::mGeneralPlotOptions.notchFactor;
}

// Across the end of a stroke. The bar goes by the vector itself, so that the factor leaves its
// length alone.
void writeCrossBar(QTextStream &out, double ex, double ey, double dx, double dy)
{
    if (CDbGeneralPlotOptions::mGeneralPlotOptions.noNotchCrossBar) {
        return;
    }
    const double ax = ex + 0.15 * dy;
    const double ay = ey - 0.15 * dx;
    ILLUST_Move_To(out, ax, ay);
    ILLUST_Line_To(out, ax - 0.3 * dy, ay + 0.3 * dx);
    strokePath(out);
}

void writeBarredStroke(QTextStream &out, double x, double y, double dx, double dy)
{
    const double factor = notchFactor();
    const double ex = factor * dx + x;
    const double ey = factor * dy + y;
    ILLUST_Move_To(out, x, y);
    ILLUST_Line_To(out, ex, ey);
    strokePath(out);
    writeCrossBar(out, ex, ey, dx, dy);
}

void writeUserBar(QTextStream &out, double ex, double ey, double dx, double dy, double width)
{
    const double length = std::sqrt(dx * dx + dy * dy);
    const double ux = dx / length;
    const double uy = dy / length;
    const double ax = ex + width * 0.5 * uy;
    const double ay = ey - width * 0.5 * ux;
    ILLUST_Move_To(out, ax, ay);
    ILLUST_Line_To(out, ax - uy * width, ay + ux * width);
    strokePath(out);
}

} // namespace

void ILLUST_Simple_Notch(QTextStream &out, double x, double y, double dx, double dy)
{
    ILLUST_First_Fin_Groupe(out, true);
    writeBarredStroke(out, x, y, dx, dy);
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLUST_Double_Notch(QTextStream &out, double x, double y, double dx, double dy)
{
    ILLUST_First_Fin_Groupe(out, true);
    writeBarredStroke(out, x + 0.5 * dy, y - 0.5 * dx, dx, dy);
    writeBarredStroke(out, x - 0.5 * dy, y + 0.5 * dx, dx, dy);
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLUST_V_Notch(QTextStream &out, double x, double y, double dx, double dy)
{
    const double factor = notchFactor();
    const double gx = factor * dx;
    const double gy = factor * dy;
    ILLUST_First_Fin_Groupe(out, true);
    ILLUST_Move_To(out, x + 0.5 * gy, y - 0.5 * gx);
    ILLUST_Line_To(out, x + gx, y + gy);
    ILLUST_Line_To(out, x + 0.5 * gy - gy, y - 0.5 * gx + gx);
    strokePath(out);
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLUST_User_Notch(QTextStream &out, double x, double y, double dx, double dy, double width)
{
    if (std::abs(dx) <= kNothing && std::abs(dy) <= kNothing) {
        return;
    }
    ILLUST_First_Fin_Groupe(out, true);
    ILLUST_Move_To(out, x, y);
    ILLUST_Line_To(out, x + dx, y + dy);
    strokePath(out);
    if (std::abs(width) > kNothing) {
        writeUserBar(out, x + dx, y + dy, dx, dy, width);
    }
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLUST_V_De_Match(QTextStream &out, double x, double y)
{
    constexpr double kHalf = 0.25;
    constexpr double kSide = 0.5;
    const double left = x - kHalf;
    const double bottom = y - kHalf;
    ILLUST_First_Fin_Groupe(out, true);
    ILLUST_Move_To(out, left, bottom);
    ILLUST_Line_To(out, left + kSide, bottom);
    ILLUST_Line_To(out, left + kSide, bottom + kSide);
    ILLUST_Line_To(out, left + kSide - kSide, bottom + kSide);
    ILLUST_Line_To(out, left, bottom);
    closePath(out);
    ILLUST_Move_To(out, x, y - kHalf);
    ILLUST_Line_To(out, x, y + kHalf);
    strokePath(out);
    ILLUST_Move_To(out, x - kHalf, y);
    ILLUST_Line_To(out, x + kHalf, y);
    strokePath(out);
    ILLUST_First_Fin_Groupe(out, false);
}

} // namespace KivIllustrator
} // namespace KivSystem
