#include "settings/BinaryReader.h"

#include <algorithm>
#include <utility>

namespace cardreel {

BinaryReader::BinaryReader(QByteArray bytes)
    : m_bytes(std::move(bytes))
{
}

bool BinaryReader::canReadBytes(qsizetype n) const
{
    return n <= remainCount();
}

bool BinaryReader::readByte(quint8& out)
{
    out = 0;
    if (!canReadBytes(1))
        return false;
    out = static_cast<quint8>(m_bytes.at(m_position++));
    return true;
}

qsizetype BinaryReader::readWithBuffer(quint8* buffer, qsizetype bufferSize, qsizetype readCount)
{
    if (!buffer || readCount < 0 || bufferSize < readCount)
        return -1;
    std::fill_n(buffer, bufferSize, quint8(0));
    const qsizetype count = std::min(readCount, remainCount());
    std::copy_n(m_bytes.constBegin() + m_position, count, buffer);
    m_position += count;
    return count;
}

bool BinaryReader::seek(qsizetype pos)
{
    if (pos < 0 || pos >= m_bytes.size())
        return false;
    m_position = pos;
    return true;
}

} // namespace cardreel
