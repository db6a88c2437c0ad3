// The settings dialog. Its pages are made from the descriptions of HostSettings.h.
#ifndef KIVHOST_SETTINGSDIALOG_H
#define KIVHOST_SETTINGSDIALOG_H

class QWidget;

namespace KivSystem {

/// Runs the dialog. True when it was accepted: the user's store then has the new settings, and
/// KivLocale and the marker library obey them. The language alone waits for the next start.
bool runSettingsDialog(QWidget *parent);

} // namespace KivSystem

#endif
