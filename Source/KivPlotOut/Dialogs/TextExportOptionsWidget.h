// TextExportOptionsWidget: the panel of the user's own text report. It chooses the separators and
// whether each size has a line of its own.

#ifndef KIVPLOTOUT_TEXTEXPORTOPTIONSWIDGET_H
#define KIVPLOTOUT_TEXTEXPORTOPTIONSWIDGET_H

#include <QScopedPointer>
#include <QWidget>

namespace KivSystem {

class TextExportOptionsUi;
class TextProcessorOptions;

class TextExportOptionsWidget : public QWidget
{
    Q_OBJECT

public:
    /// Shows `options`. The text of a separator ends at its first zero byte and is read in the
    /// local encoding.
    explicit TextExportOptionsWidget(
        const TextProcessorOptions &options, QWidget *parent = nullptr);
    ~TextExportOptionsWidget() override;

    /// What the controls say now. "Other" without a text is an empty separator.
    TextProcessorOptions options() const;

private Q_SLOTS:
    // Touching a text field selects its radio button.
    void on_editFiledOther_textEdited(const QString &text);
    void on_editFiledOther_selectionChanged();
    void on_editRepeatOther_textEdited(const QString &text);
    void on_editRepeatOther_selectionChanged();

private:
    QScopedPointer<TextExportOptionsUi> m_ui;
};

} // namespace KivSystem

#endif
