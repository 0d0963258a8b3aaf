#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

#include <functional>
#include <string_view>

namespace lexiquill {

/// Writes one JSON value piece by piece as UTF-8 and passes the bytes to a sink in large chunks. The caller
/// is responsible for calling begin, key, value and end in an order that makes valid JSON.
class JsonWriter {
public:
    enum class Style {
        Compact,
        Pretty, ///< a member or element per line, two blanks per indentation level
    };
    using Sink = std::function<void(QByteArrayView)>;

    JsonWriter(Style style, Sink sink);

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    /// The name of the next member; plain ASCII without characters that need an escape.
    void key(std::string_view name);

    /// A lone surrogate becomes U+FFFD.
    void value(QStringView text);
    /// ASCII text without characters that need an escape.
    void plainValue(std::string_view text);
    void value(qint64 number);
    /// The shortest text that reads back as the same number; null for infinities and NaN.
    void value(double number);
    void value(bool boolean);

    /// Writes the separators before the next value, so that position() is the start of that value.
    void startValue();
    /// Writes a piece of the JSON text of the value that was started.
    void text(QByteArrayView piece);
    /// How many bytes have been written.
    qint64 position() const { return m_handedOver + m_used; }

    /// Passes the remaining bytes to the sink.
    void finish();
    /// Overwrites the text that is still in the writer's buffer.
    void wipeBuffer();

private:
    void open(char bracket);
    void close(char bracket);
    char *begin(qsizetype size);
    qsizetype lineStartSize() const;
    char *startLine(char *out) const;
    char *reserve(qsizetype size);
    void advance(const char *end);
    void quote(std::string_view text, std::string_view behind);
    void writeToken(std::string_view token);

    Style m_style;
    Sink m_sink;
    QByteArray m_buffer;
    qsizetype m_used = 0;
    qint64 m_handedOver = 0;
    int m_depth = 0;
    bool m_isFirst = true;
    bool m_followsKey = false;
};

} // namespace lexiquill
