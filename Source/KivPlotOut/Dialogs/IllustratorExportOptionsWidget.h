// IllustratorExportOptionsWidget: the panel of the format "Illustrator(TM)": the scale of the
// drawing.

#ifndef KIVPLOTOUT_ILLUSTRATOREXPORTOPTIONSWIDGET_H
#define KIVPLOTOUT_ILLUSTRATOREXPORTOPTIONSWIDGET_H

#include <QScopedPointer>
#include <QWidget>

namespace KivSystem {
namespace KivIllustrator {

class IllustratorExportOptionsUi;

class IllustratorExportOptionsWidget : public QWidget
{
    Q_OBJECT
    // The way by which a host keeps a panel's preference: whole numbers, whatever the panel means.
    Q_PROPERTY(int prefOptions READ prefOptions WRITE setPrefOptions)

public:
    /// Shows the stored scale, even one that cannot be typed.
    explicit IllustratorExportOptionsWidget(QWidget *parent);
    ~IllustratorExportOptionsWidget() override;

    /// The scale in the field, 1 for 100 percent; what the parser gives for a text that is none.
    double factor() const;

    /// The stored scale, 1 where there is none.
    double prefOptions() const;
    /// Stores the scale in the field. The argument does not count, on purpose.
    void setPrefOptions(double ignored);

private:
    QScopedPointer<IllustratorExportOptionsUi> m_ui;
};

} // namespace KivIllustrator
} // namespace KivSystem

#endif
