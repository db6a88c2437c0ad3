// SettingEditor: one setting in a dialog. Its control is made from the setting's type, so that no
// value can be entered that the setting cannot have.
#ifndef KIVHOST_SETTINGSEDITORS_H
#define KIVHOST_SETTINGSEDITORS_H

#include "HostSettings.h"

#include <functional>

class QWidget;

namespace KivSystem {

struct SettingEditor
{
    const Setting *setting = nullptr;
    QWidget *control = nullptr; ///< belongs to its parent; has the setting's name
    /// Texts are those of the setting's type, or its default text.
    std::function<QString()> text;
    std::function<void(const QString &)> setText;
    /// Whether what is typed is a value at all.
    std::function<bool()> isValid;
};

SettingEditor makeEditor(const Setting &setting);

/// What the control is called: the setting's meaning as a label.
QString labelOf(const Setting &setting);

/// The words of a choice for a person: "Millimetre" for "mm".
QString choiceLabel(const Setting &setting, const QString &choice);

} // namespace KivSystem

#endif
