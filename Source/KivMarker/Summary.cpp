#include "KivMarker/Summary.h"

namespace KivSystem {

bool SummaryInfo::isValidStamped(const QDateTime &stamp)
{
    return stamp.isValid() && stamp != emptyStamp();
}

QDateTime SummaryInfo::emptyStamp()
{
    return QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC);
}

} // namespace KivSystem
