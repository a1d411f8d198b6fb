#include "app/cli/JsonOutput.h"

#include <QDateTime>

#include <rapidjson/filewritestream.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdio>

namespace cardreel {

struct JsonOutput::Private
{
    std::array<char, 65536> buffer{};
    rapidjson::FileWriteStream stream{stdout, buffer.data(), buffer.size()};
    rapidjson::Writer<rapidjson::FileWriteStream> writer{stream};
};

JsonOutput::JsonOutput()
    : d(std::make_unique<Private>())
{
}

JsonOutput::~JsonOutput()
{
    d->stream.Put('\n');
    d->stream.Flush();
    std::fflush(stdout);
}

void JsonOutput::beginObject()
{
    d->writer.StartObject();
}

void JsonOutput::endObject()
{
    d->writer.EndObject();
}

void JsonOutput::beginArray()
{
    d->writer.StartArray();
}

void JsonOutput::endArray()
{
    d->writer.EndArray();
}

void JsonOutput::key(const char* name)
{
    d->writer.Key(name);
}

void JsonOutput::value(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    d->writer.String(bytes.constData(), static_cast<rapidjson::SizeType>(bytes.size()));
}

void JsonOutput::value(double number)
{
    d->writer.Double(number);
}

void JsonOutput::value(qint64 number)
{
    d->writer.Int64(number);
}

void JsonOutput::value(bool yes)
{
    d->writer.Bool(yes);
}

void JsonOutput::null()
{
    d->writer.Null();
}

void JsonOutput::value(Instant date)
{
    value(QDateTime::fromMSecsSinceEpoch(date.time_since_epoch().count(), Qt::UTC).toString(Qt::ISODateWithMs));
}

} // namespace cardreel
