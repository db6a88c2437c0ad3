#include "OutputFile.h"

namespace KivSystem {

OutputFile::OutputFile(const QString &path) : QFile(path)
{
    m_buffer.reserve(kBufferSize);
}

OutputFile::~OutputFile()
{
    OutputFile::close();
}

QFileDevice::FileError OutputFile::finish()
{
    if (handOn() && !flush()) {
        noteError();
    }
    return m_firstError == NoError ? error() : m_firstError;
}

bool OutputFile::open(OpenMode mode)
{
    m_firstError = NoError;
    return QFile::open(mode);
}

void OutputFile::close()
{
    if (isOpen()) {
        handOn();
    }
    QFile::close();
}

bool OutputFile::seek(qint64 offset)
{
    return handOn() && QFile::seek(offset);
}

bool OutputFile::resize(qint64 size)
{
    return handOn() && QFile::resize(size);
}

qint64 OutputFile::size() const
{
    return qMax(QFile::size(), m_bufferStart + m_buffer.size());
}

qint64 OutputFile::readData(char *data, qint64 length)
{
    return handOn() ? QFile::readData(data, length) : -1;
}

qint64 OutputFile::writeData(const char *data, qint64 length)
{
    if (m_buffer.size() + length > kBufferSize && !handOn()) {
        return -1;
    }
    if (m_buffer.isEmpty()) {
        m_bufferStart = pos();
    }
    m_buffer.append(data, static_cast<int>(length));
    return length;
}

// What could not be written is dropped: it would only fail again.
bool OutputFile::handOn()
{
    const qint64 length = m_buffer.size();
    const bool isWritten =
        length == 0 || (QFile::writeData(m_buffer.constData(), length) == length && flush());
    m_buffer.resize(0);
    if (!isWritten) {
        noteError();
    }
    return isWritten;
}

// A write that was cut short comes without an error.
void OutputFile::noteError()
{
    if (m_firstError == NoError) {
        m_firstError = error() == NoError ? WriteError : error();
    }
}

} // namespace KivSystem
