// ExportPanel: the place in the export dialog where a format shows its options. The panel stays its
// exporter's.
#ifndef KIVHOST_EXPORTPANEL_H
#define KIVHOST_EXPORTPANEL_H

#include <QPointer>
#include <QScrollArea>
#include <QVariant>

#include <functional>

class QLabel;

namespace KivSystem {

class ExportPanel : public QScrollArea
{
public:
    explicit ExportPanel(QWidget *parent);
    ~ExportPanel() override;

    /// Shows the panel in place of the one before. Null: `text` is shown.
    void showPanel(QWidget *panel, const QString &text);
    /// Gives the panel back.
    void release();

    /// The last one of the panel on the way of the Tab key; null without a panel.
    QWidget *lastField() const;

    /// The values in the fields of a panel, to tell whether the user changed one.
    static QVariantList valuesIn(const QWidget &panel);

    /// The keys Enter and Escape in a panel are meant for the dialog around it.
    std::function<void()> onAccept;
    std::function<void()> onReject;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    bool takeKey(int key);

    QPointer<QWidget> m_panel;
    QLabel *m_text;
    QWidget *m_frame;
};

} // namespace KivSystem

#endif
