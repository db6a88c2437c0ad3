// FileReaders: turn the bytes of an exported file into what stands in it. A reader takes any bytes:
// it either returns all that the file tells or throws ReadFault with one sentence and the place.
#ifndef KIVHOST_FILEREADERS_H
#define KIVHOST_FILEREADERS_H

#include "CutProgram.h"

#include <QPolygonF>
#include <QStringList>

#include <optional>
#include <stdexcept>
#include <vector>

class QByteArray;

namespace KivSystem {

/// what() is the sentence in UTF-8, with the place in front: "line 7: ...".
class ReadFault : public std::runtime_error
{
public:
    explicit ReadFault(const QString &sentence)
        : std::runtime_error(sentence.toUtf8().toStdString())
    {}
};

/// Bytes out of a file as they can stand in a message: not too long, and what cannot be seen, such
/// as control characters, as its code: \u001b.
QString quoted(const QByteArray &bytes);

/// A cut file of the ANSI dialect. Places are counted in blocks from 1, and bytes from 0.
CutProgram readAnsiCutFile(const QByteArray &bytes);

/// A cut file of the Eastman dialect. Places are lines from 1, as in those below.
CutProgram readEastmanCutFile(const QByteArray &bytes);

struct NesterPolyline
{
    QPolygonF points; ///< cm, or whatever the file's unit is
    bool closed = false;
};

struct NesterBlock
{
    QString name;
    QStringList keywords; ///< "NAME:FRONT"
    std::vector<NesterPolyline> lines;
    int instances = 0; ///< INSERTs of the block
};

struct NesterFile
{
    QStringList keywords; ///< those that hold for all blocks
    std::vector<NesterBlock> blocks;
};

/// A DXF file with blocks. Entities other than TEXT, POLYLINE and INSERT are passed over.
NesterFile readNesterFile(const QByteArray &bytes);

/// The blocks in rows, each with its name and how often it is wanted.
Picture pictureOf(const NesterFile &file);

/// An Illustrator drawing as our own exports write them, as a picture with the file's colours. The
/// unit is that of the file at the factor 1.
Picture readIllustratorFile(const QByteArray &bytes);

struct TableFile
{
    QString separator; ///< empty when every line is one field
    std::vector<QStringList> rows;
    int columns = 0;           ///< of the longest row
    bool isSingleByte = false; ///< read as Windows-1252, being no valid UTF-8
    QString doubt;             ///< why the separator that was found out could not be used
};

/// What separates the fields of a table.
struct TableForm
{
    std::optional<QString> separator;     ///< empty: nothing; none: it is found out
    QString usual = QStringLiteral("\t"); ///< that reports are written with: tried before others
};

/// A report or a list of labels: UTF-8, or Windows-1252 where it is none. A separator that is found
/// out gives all the first lines equally many fields.
TableFile readTableFile(const QByteArray &bytes, const TableForm &form = {});

/// The first rows of the table, as a picture.
Picture pictureOf(const TableFile &table);

} // namespace KivSystem

#endif
