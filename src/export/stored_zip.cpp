#include "export/stored_zip.h"

#include <array>
#include <cstdint>

#include "export/little_endian.h"

namespace kv408 {
namespace {

constexpr std::uint32_t local_file = 0x04034B50;
constexpr std::uint32_t directory_file = 0x02014B50;
constexpr std::uint32_t directory_end = 0x06054B50;
constexpr std::uint16_t version_needed = 10; // 1.0: nothing is compressed
constexpr std::uint16_t first_day = 0x21;    // 1980-01-01

std::uint32_t crc32(std::string_view bytes) {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::uint32_t rest = 0xFFFFFFFF;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            rest = (rest >> 1U) ^ ((rest & 1U) != 0 ? polynomial : 0U);
        }
    }
    return ~rest;
}

void put_16(std::string& bytes, std::uint16_t value) {
    put_little_endian(bytes, value);
}

void put_32(std::string& bytes, std::size_t value) {
    put_little_endian(bytes, static_cast<std::uint32_t>(value));
}

/// The fields that a file's own header and its entry in the directory share.
void put_description(std::string& bytes, const ZipEntry& entry) {
    put_16(bytes, version_needed);
    put_16(bytes, 0); // no flags
    put_16(bytes, 0); // stored
    put_16(bytes, 0); // midnight
    put_16(bytes, first_day);
    put_32(bytes, crc32(entry.bytes));
    put_32(bytes, entry.bytes.size());
    put_32(bytes, entry.bytes.size());
    put_16(bytes, static_cast<std::uint16_t>(entry.name.size()));
    put_16(bytes, 0); // nothing further
}

} // namespace

std::string stored_zip(std::span<const ZipEntry> entries) {
    std::string archive;
    std::string directory;
    for (const ZipEntry& entry : entries) {
        put_32(directory, directory_file);
        put_16(directory, version_needed);
        put_description(directory, entry);
        put_16(directory, 0); // no remark
        put_16(directory, 0); // on the first disk
        put_16(directory, 0); // no text
        put_32(directory, 0); // no attributes
        put_32(directory, archive.size());
        directory += entry.name;
        put_32(archive, local_file);
        put_description(archive, entry);
        archive += entry.name;
        archive += entry.bytes;
    }
    const std::size_t start = archive.size();
    archive += directory;
    put_32(archive, directory_end);
    put_16(archive, 0);
    put_16(archive, 0);
    put_16(archive, static_cast<std::uint16_t>(entries.size()));
    put_16(archive, static_cast<std::uint16_t>(entries.size()));
    put_32(archive, directory.size());
    put_32(archive, start);
    put_16(archive, 0); // no remark
    return archive;
}

} // namespace kv408
