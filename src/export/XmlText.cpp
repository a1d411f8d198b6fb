#include "export/XmlText.h"

#include <array>
#include <charconv>

namespace cardreel {

XmlText::XmlText(const char* declaration, LineEnds lineEnds)
    : m_lineEnds(lineEnds)
{
    m_buffer.open(QIODevice::WriteOnly);
    m_buffer.write(declaration);
    m_writer.setDevice(&m_buffer);
    m_writer.setAutoFormatting(true);
}

void XmlText::begin(const char* name, Attributes attributes)
{
    m_writer.writeStartElement(QString::fromLatin1(name));
    for (const auto& [attribute, value] : attributes)
        m_writer.writeAttribute(QString::fromLatin1(attribute), QString::fromUtf8(value));
}

void XmlText::add(const char* name, const QByteArray& text, Attributes attributes)
{
    add(name, QString::fromUtf8(text), attributes);
}

void XmlText::add(const char* name, const QString& text, Attributes attributes)
{
    begin(name, attributes);
    m_writer.writeCharacters(text);
    m_writer.writeEndElement();
}

QByteArray XmlText::take()
{
    m_writer.writeEndDocument();
    m_buffer.close();
    QByteArray text = std::exchange(m_buffer.buffer(), {});
    if (m_lineEnds == LineEnds::CrLf)
        text.replace("\n", "\r\n");
    return text;
}

void appendFixed(QByteArray& text, double value, int decimals)
{
    std::array<char, 400> buffer; // the greatest double has 309 digits before the point
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    if (error == std::errc())
        text.append(buffer.data(), end - buffer.data());
}

QByteArray fixedText(double value, int decimals)
{
    QByteArray text;
    appendFixed(text, value, decimals);
    return text;
}

} // namespace cardreel
