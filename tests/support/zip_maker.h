#pragma once

// ZIP files byte by byte, the odd ones included: APPNOTE.TXT 6.3.3.

#include <zlib.h>

#include <string>
#include <vector>

namespace test {

struct ZipItem {
    std::string name;
    std::string content;
    bool deflated = false;
    bool descriptor = false;  // sizes and check sum behind the data only
    std::string extra = {};
    std::string comment = {};
};

inline std::string Little(unsigned long long value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

inline std::string Deflated(const std::string& content) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string out(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(out.size() - stream.avail_out);
    deflateEnd(&stream);
    return out;
}

// Where the parts of a made archive lie.
struct ZipLayout {
    std::string bytes;
    std::vector<std::size_t> local, data, central;  // of each item
    std::size_t end = 0;                            // of the directory, where its closing record lies
};

inline ZipLayout MakeZip(const std::vector<ZipItem>& items, const std::string& comment = {}) {
    ZipLayout zip;
    std::string directory;
    std::vector<std::size_t> central;
    for (const ZipItem& item : items) {
        const std::string data = item.deflated ? Deflated(item.content) : item.content;
        const auto crc = crc32(0, reinterpret_cast<const Bytef*>(item.content.data()), static_cast<uInt>(item.content.size()));
        const std::string sums = Little(crc, 4) + Little(data.size(), 4) + Little(item.content.size(), 4);
        // Version 2.0, flags, method, 1 January 2020.
        const std::string head = Little(20, 2) + Little(item.descriptor ? 8 : 0, 2) + Little(item.deflated ? 8 : 0, 2) +
                                 Little(0, 2) + Little(0x5021, 2);
        const std::string lengths = Little(item.name.size(), 2) + Little(item.extra.size(), 2);
        zip.local.push_back(zip.bytes.size());
        zip.bytes += "PK\x03\x04" + head + (item.descriptor ? std::string(12, '\0') : sums) + lengths + item.name + item.extra;
        zip.data.push_back(zip.bytes.size());
        zip.bytes += data;
        if (item.descriptor)
            zip.bytes += "PK\x07\x08" + sums;
        zip.central.push_back(directory.size());
        directory += "PK\x01\x02" + Little(20, 2) + head + sums + lengths + Little(item.comment.size(), 2) +
                     std::string(8, '\0') + Little(zip.local.back(), 4) + item.name + item.extra + item.comment;
    }
    for (std::size_t& place : zip.central)
        place += zip.bytes.size();
    zip.end = zip.bytes.size() + directory.size();
    zip.bytes += directory + std::string("PK\x05\x06\0\0\0\0", 8) + Little(items.size(), 2) + Little(items.size(), 2) +
                 Little(directory.size(), 4) + Little(zip.bytes.size(), 4) + Little(comment.size(), 2) + comment;
    return zip;
}

}  // namespace test
