// What the tests of the host share: a folder that is thrown away, a console that keeps what is
// printed, and a small marker.
#ifndef KIVHOST_HOSTTESTSUPPORT_H
#define KIVHOST_HOSTTESTSUPPORT_H

#include "Console.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

// How the messages of failed tests show a text.
inline std::ostream &operator<<(std::ostream &stream, const QString &text)
{
    return stream << text.toStdString();
}
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

namespace KivSystem {

class Folder
{
public:
    QString path(const QString &name = QString()) const { return m_directory.filePath(name); }

    QString write(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path(name);
        file.write(bytes);
        return path(name);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    /// Everything in the folder, hidden things included, by relative path.
    QStringList contents() const
    {
        QStringList names;
        QDirIterator entries(m_directory.path(),
            QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            names.append(QDir(m_directory.path()).relativeFilePath(entries.next()));
        }
        names.sort();
        return names;
    }

private:
    QTemporaryDir m_directory;
};

struct KeptConsole
{
    QString out;
    QString err;
    QTextStream outStream{&out};
    QTextStream errStream{&err};
    Console console{outStream, errStream};
};

/// The sentence of the HostError that `action` throws, behind its exit status; empty without one.
inline QString faultOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const HostError &error) {
        return QStringLiteral("%1 %2").arg(QString::number(error.status()), error.sentence());
    }
    return QString();
}

/// Two fabrics; the second is not exported. One placed piece of 10 x 20 cm on the first.
inline QByteArray smallMarker()
{
    return R"({"format": "kiv-marker", "version": 1, "layers": [{"name": "Layer A"}],
"fabrics": [
 {"name": "Shell", "layers": [{"width": 150, "groups": [
   {"polygons": [{"piece": 1, "size": 1, "x": 5, "y": 1}]},
   {"place": "standby", "polygons": [{"piece": 1, "size": 1, "side": "right"}]}]}],
  "pieces": [{"name": "Front", "style": 1, "sizes": [
    {"number": 3, "contour": [[0, 0], [10, 0], [10, 20], [0, 20]]}],
    "chart": [{"layer": 1, "size": 1, "left": 2, "right": 2}]}]},
 {"name": "Lining", "status": 0, "layers": [{"width": 140}]}],
"styles": [{"name": "Tee", "sizes": [{"number": 3, "name": "M"}],
  "garments": [{"fabric": 1, "layer": 1, "quantities": [2]}]}]}
)";
}

} // namespace KivSystem

#endif
