/// What an automatic marker making (nesting) is given to place.

#ifndef KIVMARKER_AUTOMARKEROPTIONS_H
#define KIVMARKER_AUTOMARKEROPTIONS_H

namespace KivSystem {

struct AutoMarkerSettings
{
    bool piecesInChart = true;   ///< the pieces that the chart still asks for
    bool piecesInStandby = true; ///< the groups that stand by beside the fabric
};

/// One instance for the whole process, used on the main thread.
class CAutoMarkerOptions
{
public:
    static CAutoMarkerOptions *instance();

    CAutoMarkerOptions(const CAutoMarkerOptions &) = delete;
    CAutoMarkerOptions &operator=(const CAutoMarkerOptions &) = delete;

    /// All options at once: what the host stores.
    const AutoMarkerSettings &settings() const { return m_settings; }
    void setSettings(const AutoMarkerSettings &settings) { m_settings = settings; }

    bool markerPiecesInCharte() const { return m_settings.piecesInChart; }
    void setMarkerPiecesInCharte(bool wanted) { m_settings.piecesInChart = wanted; }
    bool markerPiecesInStandby() const { return m_settings.piecesInStandby; }
    void setMarkerPiecesInStandby(bool wanted) { m_settings.piecesInStandby = wanted; }

private:
    CAutoMarkerOptions() = default;

    AutoMarkerSettings m_settings;
};

} // namespace KivSystem

#endif
