/// The request for a cut document: for which format and which cutter it is made, and what the
/// format's panel says at that moment. All else comes from the cut settings.

#ifndef KIVMARKER_SVGOPTIONS_H
#define KIVMARKER_SVGOPTIONS_H

#include "KivMarker/CutSettings.h"

namespace KivSystem {

class SvgOptions
{
public:
    /// The notch length that leaves each notch of the marker as long as it is.
    static constexpr double kOwnNotchLengths = -1;

    enum ExportType : int
    {
        ExportNone = 0,
        ExportAnsi = 1,
        ExportEastman = 2,
        ExportDrastem = 4,
        ExportLabels = 5,
    };

    /// Who asks for the document.
    enum SvgCaller : int
    {
        CallerDefault = 1, ///< nobody in particular: pieces in the order of the marker
        CallerExport = 2,  ///< an export: the order is shortened
        CallerZentrim =
            3, ///< one of the drawing that is optimised in the Zentrim view: starts, too
    };

    /// An ExportType; the exporters pass the number of their format.
    void setExportType(int type) { m_exportType = type; }
    int exportType() const { return m_exportType; }

    void setCaller(SvgCaller caller) { m_caller = caller; }
    SvgCaller caller() const { return m_caller; }

    /// Whether pieces outside the fabric are refused.
    void setCheckRange(bool isChecked) { m_checkRange = isChecked; }
    bool checkRange() const { return m_checkRange; }

    /// Factors on the coordinates: 1 is the true size.
    void setScaleX(double factor) { m_scaleX = factor; }
    double scaleX() const { return m_scaleX; }
    void setScaleY(double factor) { m_scaleY = factor; }
    double scaleY() const { return m_scaleY; }

    /// In cm; any negative length means the same as kOwnNotchLengths.
    void setNotchLength(double length) { m_notchLength = length; }
    double notchLength() const { return m_notchLength; }

    /// The angle of a drill in whole degrees, for Eastman cutters.
    void setDrillSize(short degrees) { m_drillSize = degrees; }
    short drillSize() const { return m_drillSize; }

    /// A DrillType, for Eastman cutters.
    void setDrillType(short type) { m_drillType = type; }
    short drillType() const { return m_drillType; }

private:
    int m_exportType = ExportNone;
    SvgCaller m_caller = CallerDefault;
    bool m_checkRange = false;
    double m_scaleX = 1;
    double m_scaleY = 1;
    double m_notchLength = kOwnNotchLengths;
    short m_drillSize = 0;
    short m_drillType = DrillDrill;
};

} // namespace KivSystem

#endif
