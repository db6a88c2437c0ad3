#include "MarkerFileWords.h"

namespace KivSystem {

const std::array<Word<FabricType>, 4> kFabricTypeWords{{
    {PlainFabric, "plain"},
    {FoldOnBottom, "foldBottom"},
    {FoldOnTop, "foldTop"},
    {TubularFabric, "tubular"},
}};

const std::array<Word<MarkerPointType>, 8> kPointTypeWords{{
    {PlainPoint, "corner"},
    {CurvePoint, "curve"},
    {SimpleNotch, "simpleNotch"},
    {DoubleNotch, "doubleNotch"},
    {VNotch, "vNotch"},
    {Punch, "punch"},
    {UserPunch, "userPunch"},
    {UserNotch, "userNotch"},
}};

const std::array<Word<InternalLine::Kind>, 3> kLineKindWords{{
    {InternalLine::Kind::Cut, "cut"},
    {InternalLine::Kind::Draw, "draw"},
    {InternalLine::Kind::Grain, "grain"},
}};

const std::array<Word<Qt::AlignmentFlag>, 3> kAlignmentWords{{
    {Qt::AlignLeft, "left"},
    {Qt::AlignHCenter, "center"},
    {Qt::AlignRight, "right"},
}};

const std::array<Word<TextWorkSection>, 3> kSectionWords{{
    {WorkAreaSection, "marker"},
    {HeaderSection, "header"},
    {MarginSection, "margin"},
}};

const std::array<Word<GroupPlace>, 2> kPlaceWords{{
    {PlacedOnMarker, "marker"},
    {PlacedInStandBy, "standby"},
}};

const std::array<Word<bool>, 2> kSideWords{{
    {true, "left"},
    {false, "right"},
}};

const std::array<Word<CutDownKind>, 3> kCutDownWords{{
    {NotCutDown, "none"},
    {MirroredPartner, "mirrored"},
    {TurnedPartner, "turned"},
}};

const std::array<Word<float PunchFeature::*>, 16> kPunchSizeWords{{
    {&PunchFeature::punchBarLeft, "barLeft"},
    {&PunchFeature::punchBarRight, "barRight"},
    {&PunchFeature::punchBarDown, "barDown"},
    {&PunchFeature::punchBarUp, "barUp"},
    {&PunchFeature::punchPlus, "plus"},
    {&PunchFeature::punchCross, "cross"},
    {&PunchFeature::punchBowTie, "bowTie"},
    {&PunchFeature::punchSquare, "square"},
    {&PunchFeature::punchDiamond, "diamond"},
    {&PunchFeature::punchOctagon, "octagon"},
    {&PunchFeature::punchTriangleLeft, "triangleLeft"},
    {&PunchFeature::punchTriangleRight, "triangleRight"},
    {&PunchFeature::punchTwinStroke, "twinStroke"},
    {&PunchFeature::punchTwinCurve, "twinCurve"},
    {&PunchFeature::punchHalfDiscs, "halfDiscs"},
    {&PunchFeature::punchCorner, "corner"},
}};

const std::array<Word<QString PieceData::*>, 6> kPieceTextWords{{
    {&PieceData::patternText, "pattern"},
    {&PieceData::descriptionText, "description"},
    {&PieceData::codeText, "code"},
    {&PieceData::codeReferenceText, "codeReference"},
    {&PieceData::tissusText, "fabric"},
    {&PieceData::identificationText, "identification"},
}};

QString stampText(const QDateTime &stamp)
{
    return stamp.date().toString(Qt::ISODate) + QLatin1Char('T') +
           stamp.time().toString(Qt::ISODate);
}

QDateTime stampOf(const QString &text)
{
    // Date and time by themselves: together they would be read as a local time, and one that a
    // change to summer time leaves out is no local time.
    const QDateTime stamp(QDate::fromString(text.section(QLatin1Char('T'), 0, 0), Qt::ISODate),
        QTime::fromString(text.section(QLatin1Char('T'), 1), Qt::ISODate), Qt::UTC);
    return stampText(stamp) == text ? stamp : QDateTime();
}

bool isNotchType(int pointType)
{
    return pointType == SimpleNotch || pointType == DoubleNotch || pointType == VNotch ||
           pointType == UserNotch;
}

bool isPunchType(int pointType)
{
    return pointType == Punch || pointType == UserPunch;
}

} // namespace KivSystem
