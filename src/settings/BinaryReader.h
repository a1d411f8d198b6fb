#pragma once

#include <QByteArray>

namespace cardreel {

/// A position in a block of bytes, from which a parser takes them one after the other. Holds the block as long as it
/// lives; one thread at a time.
class BinaryReader
{
public:
    explicit BinaryReader(QByteArray bytes);

    /// Whether `n` more bytes are there.
    bool canReadBytes(qsizetype n) const;
    qsizetype position() const { return m_position; }
    qsizetype remainCount() const { return m_bytes.size() - m_position; }

    /// The next byte; at the end `out` becomes 0 and the result is false.
    bool readByte(quint8& out);

    /// Fills the buffer with zeros, then with the next `readCount` bytes or as many as are left, and returns how many
    /// those were; -1, touching nothing, without a buffer or when it is smaller than `readCount`.
    qsizetype readWithBuffer(quint8* buffer, qsizetype bufferSize, qsizetype readCount);

    /// False, staying where it is, unless `pos` lies before the end.
    bool seek(qsizetype pos);

private:
    QByteArray m_bytes;
    qsizetype m_position = 0;
};

} // namespace cardreel
