#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>

#include <initializer_list>
#include <utility>

namespace cardreel {

enum class LineEnds { Lf, CrLf };

/// The XML text of an exported document in the making, indented, in UTF-8. It is written as it goes: a drive of
/// hundreds of hours takes no more memory than its text. Only for sources of this folder. One thread at a time.
class XmlText
{
public:
    using Attributes = std::initializer_list<std::pair<const char*, const char*>>;

    /// The declaration stands as it is given, since each format spells its own in another way; readers take all of
    /// them.
    XmlText(const char* declaration, LineEnds lineEnds);

    /// An element that holds a text.
    void add(const char* name, const QByteArray& text, Attributes attributes = {});
    void add(const char* name, const QString& text, Attributes attributes = {});

    /// The whole document, once its elements are closed. Leaves nothing here.
    QByteArray take();

private:
    friend class XmlElement;

    void begin(const char* name, Attributes attributes);

    QBuffer m_buffer;
    QXmlStreamWriter m_writer;
    LineEnds m_lineEnds;
};

/// An element that holds others: it is open while this object lives.
class XmlElement
{
public:
    XmlElement(XmlText& xml, const char* name, XmlText::Attributes attributes = {})
        : m_xml(xml)
    {
        m_xml.begin(name, attributes);
    }
    ~XmlElement() { m_xml.m_writer.writeEndElement(); }
    XmlElement(const XmlElement&) = delete;
    XmlElement& operator=(const XmlElement&) = delete;

private:
    XmlText& m_xml;
};

/// The number with a fixed count of decimals and a point, whatever the locale.
QByteArray fixedText(double value, int decimals);
void appendFixed(QByteArray& text, double value, int decimals);

} // namespace cardreel
