#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

struct z_stream_s;

namespace lexiquill {

/// A deflate stream that is being unpacked.
class Inflater {
public:
    enum class Format {
        Gzip, ///< with the header and the checksum of a gzip member
        Raw,  ///< neither
    };
    enum class Step {
        Going,
        Ended, ///< the stream, or the member of a gzip file, has ended correctly
        Failed,
    };

    explicit Inflater(Format format);
    ~Inflater();
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;

    /// Unpacks from `in` to `out`, which has room for `space` bytes. Advances all three by what was used.
    Step run(QByteArrayView &in, char *&out, qsizetype &space);
    /// Begins a new stream; false when that is impossible.
    bool restart();

private:
    std::unique_ptr<z_stream_s> m_stream;
    bool m_isReady = false;
};

/// Unpacks a gzip stream that arrives in pieces.
class GzipReader {
public:
    /// Unpacks the next bytes and appends the result to `out`. Stops when `out` has more than `limit` bytes.
    /// False when the stream is damaged.
    bool feed(QByteArrayView packed, QByteArray &out, qint64 limit);
    /// Whether the stream has ended correctly.
    bool isComplete() const { return m_isComplete; }

private:
    Inflater m_inflater{Inflater::Format::Gzip};
    bool m_isComplete = false;
};

/// Appends the content of a gzip file to `out`. False when the file is damaged or does not unpack to exactly
/// `expectedSize` bytes; never unpacks more than that.
bool unpackGzip(QByteArrayView packed, qint64 expectedSize, QByteArray &out);

} // namespace lexiquill
