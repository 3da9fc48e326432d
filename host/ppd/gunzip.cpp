#include "host/ppd/gunzip.h"

#ifdef TINTWERK_HAVE_ZLIB
#include <zlib.h>
#endif

namespace tintwerk {

bool IsPacked(std::string_view bytes)
{
    return bytes.starts_with("\x1F\x8B");
}

#ifdef TINTWERK_HAVE_ZLIB
std::string Unpack(std::string& bytes, std::size_t most)
{
    constexpr int kGzip = 16; // of inflateInit2: with the header of gzip
    z_stream stream{};
    if (inflateInit2(&stream, kGzip + MAX_WBITS) != Z_OK) return "no memory to unpack it";
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string text;
    int result = Z_OK;
    while (result == Z_OK && text.size() <= most) {
        const std::size_t before = text.size();
        text.resize(before + (before ? before : 4 * bytes.size() + 64));
        stream.next_out = reinterpret_cast<Bytef*>(text.data() + before);
        stream.avail_out = static_cast<uInt>(text.size() - before);
        result = inflate(&stream, Z_NO_FLUSH);
        text.resize(text.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    bytes = std::move(text);
    return result == Z_STREAM_END || bytes.size() > most ? "" : "packed, but damaged or cut off";
}
#else
std::string Unpack(std::string&, std::size_t)
{
    return "packed; this build does not unpack: gunzip first";
}
#endif

} // namespace tintwerk
