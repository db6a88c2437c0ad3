// OutputFile: the file that an export writes into.
//
// Formats flush their stream at each line, and a QFile hands each flush to the system. This file
// keeps what is written in a buffer of its own and hands it on when it is full, before anything
// else happens to the file, on close and on destruction.

#ifndef KIVPLOTOUT_OUTPUTFILE_H
#define KIVPLOTOUT_OUTPUTFILE_H

#include <QByteArray>
#include <QFile>

namespace KivSystem {

class OutputFile : public QFile
{
public:
    static constexpr int kBufferSize = 64 * 1024; ///< bytes

    explicit OutputFile(const QString &path);
    ~OutputFile() override;

    /// Hands everything to the system. NoError when all of the file has been written: the first
    /// write that failed is kept in mind, which QFileDevice forgets at the next one.
    FileError finish();

    bool open(OpenMode mode) override;
    void close() override;
    bool seek(qint64 offset) override;
    bool resize(qint64 size) override;
    qint64 size() const override;

protected:
    qint64 readData(char *data, qint64 length) override;
    qint64 writeData(const char *data, qint64 length) override;

private:
    bool handOn();
    void noteError();

    QByteArray m_buffer;
    qint64 m_bufferStart = 0; // where the buffer belongs in the file
    FileError m_firstError = NoError;
};

} // namespace KivSystem

#endif
