/// Settings that the host, the marker library and the exporters share.

#ifndef KIVMARKER_SHAREGLOBALES_H
#define KIVMARKER_SHAREGLOBALES_H

namespace KivSystem {

/// One instance for the whole process, used on the main thread.
class CDbMarkerShareGlobales
{
public:
    static CDbMarkerShareGlobales *instance();

    CDbMarkerShareGlobales(const CDbMarkerShareGlobales &) = delete;
    CDbMarkerShareGlobales &operator=(const CDbMarkerShareGlobales &) = delete;

    /// The host's Zentrim view, which shows the fabric as it will be cut, is active.
    bool getZentrimActif() const { return m_zentrimActif; }
    void setZentrimActif(bool active) { m_zentrimActif = active; }

private:
    CDbMarkerShareGlobales() = default;

    bool m_zentrimActif = false;
};

} // namespace KivSystem

#endif
