// PaceFields: how fast the machine is that a cut file is for, for the estimate of time. What is
// typed is stored in QSettings at once.
#ifndef KIVHOST_PACEFIELDS_H
#define KIVHOST_PACEFIELDS_H

#include "CutProgram.h"

#include <QWidget>

#include <vector>

class QDoubleSpinBox;

namespace KivSystem {

class PaceFields : public QWidget
{
    Q_OBJECT

public:
    explicit PaceFields(QWidget *parent = nullptr);

    const CutPace &pace() const { return m_pace; }

    /// Shows the speeds in the user's unit: metres a minute, or inches a second. They stay exactly
    /// what they are.
    void applyUnit();

signals:
    void changed();

private:
    struct Field;

    void add(const Field &field);
    void take(const Field &field, double shown);

    CutPace m_pace;
    std::vector<QDoubleSpinBox *> m_boxes;
};

} // namespace KivSystem

#endif
