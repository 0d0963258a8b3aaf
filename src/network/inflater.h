#pragma once

#include <QByteArray>

#include <memory>

struct z_stream_s;

namespace lexiquill {

/// Unpacks a gzip stream piece by piece.
class Inflater {
public:
    Inflater();
    ~Inflater();
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    /// Appends to `out` what the next bytes unpack to, but stops when `out` holds more than `limit` bytes.
    /// False when the stream is damaged.
    bool feed(const QByteArray &packed, QByteArray &out, qint64 limit);
    /// Whether the stream has come to its proper end.
    bool isComplete() const { return m_isComplete; }

private:
    std::unique_ptr<z_stream_s> m_stream;
    bool m_isComplete = false;
};

} // namespace lexiquill
