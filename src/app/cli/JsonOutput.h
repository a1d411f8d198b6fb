#pragma once

#include "platform/Instant.h"

#include <QString>

#include <memory>
#include <optional>
#include <span>

namespace cardreel {

/// Writes one JSON value to standard output as it goes, so that millions of samples take no memory. Doubles are written
/// so that they read back to the same value.
class JsonOutput
{
public:
    JsonOutput();
    /// Ends the line.
    ~JsonOutput();
    JsonOutput(const JsonOutput&) = delete;
    JsonOutput& operator=(const JsonOutput&) = delete;

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(const char* name);

    void value(const QString& text);
    void value(double number);
    void value(qint64 number);
    void value(bool yes);
    void null();
    /// ISO 8601 in UTC with milliseconds and Z.
    void value(Instant date);
    void value(const char*) = delete; // would pass for a bool

    template<typename T>
    void member(const char* name, const T& content)
    {
        key(name);
        value(content);
    }

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace cardreel
