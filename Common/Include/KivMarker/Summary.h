/// The summary of a marker document: what its author wrote about it.

#ifndef KIVMARKER_SUMMARY_H
#define KIVMARKER_SUMMARY_H

#include <QDateTime>
#include <QString>

namespace KivSystem {

class SummaryInfo
{
public:
    QString keywords;
    QString comments; ///< may hold line breaks of any kind

    /// When the marker was stamped: a wall-clock time, kept in Qt::UTC so that it reads the same in
    /// every time zone. The default is the empty value.
    QDateTime dateStamp = emptyStamp();

    /// Whether a stamp is a real one: valid, and not the empty value.
    static bool isValidStamped(const QDateTime &stamp);

    /// The value of a marker that was never stamped: the beginning of 1970.
    static QDateTime emptyStamp();
};

} // namespace KivSystem

#endif
