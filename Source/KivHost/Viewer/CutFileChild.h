// CutFileChild: a cut file in the window. A slider, or the play button, runs the knife along its
// way.
#ifndef KIVHOST_CUTFILECHILD_H
#define KIVHOST_CUTFILECHILD_H

#include "CutProgram.h"
#include "KivCore/MainWindow.h"

#include <QTimer>

class QBoxLayout;
class QComboBox;
class QLabel;
class QSlider;
class QToolButton;

namespace KivSystem {

class CutWayView;
class PaceFields;

class CutFileChild : public MdiChild
{
    Q_OBJECT

public:
    explicit CutFileChild(CutProgram program, QWidget *parent = nullptr);
    ~CutFileChild() override;

    /// Where the head is, in cm from the start of its way. The slider counts millimetres; its last
    /// position is the end of the way.
    double way() const;
    QPointF knife() const;
    const CutWay &cutWay() const { return *m_way; }

    /// Takes over the units and decimals of the settings.
    void refresh();

    void play(bool on);
    bool isPlaying() const { return m_timer.isActive(); }

private:
    QWidget *makeControls();
    void makeSlider();
    QWidget *makeLegend();
    QToolButton *addButton(QBoxLayout *row, const char *text, const char *shortcut, const char *tip,
        void (CutFileChild::*run)());
    void applyPace();
    void goTo(double way);
    void goTo(double way, double seconds);
    void moveStep(int steps);
    void movePart(int parts);
    void stepBack() { moveStep(-1); }
    void stepOn() { moveStep(1); }
    void partBack() { movePart(-1); }
    void partOn() { movePart(1); }
    void togglePlay() { play(!isPlaying()); }
    void fitView();
    void tick();
    void showPlace();
    QString sumText() const;

    const CutProgram m_program;
    const CutSums m_sums;
    std::unique_ptr<CutWay> m_way;
    CutWayView *m_view = nullptr;
    QSlider *m_slider = nullptr;
    QToolButton *m_play = nullptr;
    QComboBox *m_pace = nullptr;
    PaceFields *m_machine = nullptr;
    QLabel *m_place = nullptr;
    QLabel *m_sum = nullptr;
    QTimer m_timer;
    double m_ahead = 0;   // cm that the head is further than the slider can tell
    double m_seconds = 0; // since the start; the head may stand still meanwhile
};

} // namespace KivSystem

#endif
