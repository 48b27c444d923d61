#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kv408 {

/// Writes pictures of at most 256 colours as PNG files: one byte per pixel, packed by run lengths
/// alone. The same picture always gives the same bytes.
class PngWriter {
public:
    /// The file of a picture `width` pixels wide; `pixels` are 0xFFRRGGBB, row after row.
    static std::string file(const std::vector<std::uint32_t>& pixels, std::size_t width) {
        PngWriter writer;
        const std::size_t height = pixels.size() / width;
        std::string header = number(width) + number(height);
        header.append({8, 3, 0, 0, 0}); // eight bits per pixel, by a palette
        const std::string rows = writer.pack_rows(pixels, width);
        std::string palette;
        for (const std::uint32_t colour : writer.palette_) {
            palette.append(number(colour).substr(1));
        }
        return std::string("\x89PNG\r\n\x1A\n") + chunk("IHDR", header) + chunk("PLTE", palette) +
               chunk("IDAT", writer.compressed(rows)) + chunk("IEND", {});
    }

private:
    static std::string number(std::size_t value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8) {
            bytes.push_back(static_cast<char>(value >> shift & 0xFFU));
        }
        return bytes;
    }

    static std::string chunk(const std::string& type, const std::string& data) {
        std::uint32_t check = 0xFFFFFFFFU;
        for (const char byte : type + data) {
            check ^= static_cast<std::uint8_t>(byte);
            for (int bit = 0; bit < 8; ++bit) {
                check = check >> 1U ^ ((check & 1U) != 0 ? 0xEDB88320U : 0U);
            }
        }
        return number(data.size()) + type + data + number(check ^ 0xFFFFFFFFU);
    }

    /// The place of `colour` in the palette, to which it is added when new.
    std::size_t index_of(std::uint32_t colour) {
        const auto found = std::find(palette_.begin(), palette_.end(), colour);
        if (found == palette_.end()) {
            palette_.push_back(colour);
            return palette_.size() - 1;
        }
        return static_cast<std::size_t>(found - palette_.begin());
    }

    std::string pack_rows(const std::vector<std::uint32_t>& pixels, std::size_t width) {
        std::string rows;
        for (std::size_t start = 0; start < pixels.size(); start += width) {
            rows.push_back(0); // no filter
            for (std::size_t x = 0; x < width; ++x) {
                rows.push_back(static_cast<char>(index_of(pixels[start + x])));
            }
        }
        return rows;
    }

    /// Appends the low `count` bits of `value`, the lowest first.
    void put(unsigned value, int count) {
        for (int bit = 0; bit < count; ++bit) {
            if (bits_ % 8 == 0) {
                stream_.push_back(0);
            }
            const unsigned byte = static_cast<std::uint8_t>(stream_.back());
            stream_.back() = static_cast<char>(byte | (value >> bit & 1U) << bits_ % 8);
            ++bits_;
        }
    }

    /// Appends a code word of `count` bits, the highest first.
    void put_code(unsigned code, int count) {
        while (count > 0) {
            put(code >> --count & 1U, 1);
        }
    }

    void put_byte(unsigned byte) {
        byte < 144 ? put_code(0x30 + byte, 8) : put_code(0x190 + byte - 144, 9);
    }

    /// Repeats the last byte `length` times, 3..10 or 258.
    void put_run(std::size_t length) {
        length == 258 ? put_code(0xC5, 8) : put_code(static_cast<unsigned>(length) - 2, 7);
        put_code(0, 5);
    }

    std::string compressed(const std::string& data) {
        stream_ = "\x78\x01";
        put(1, 1); // the last block,
        put(1, 2); // with the fixed code words
        std::uint32_t sum = 1;
        std::uint32_t sum_of_sums = 0;
        for (std::size_t at = 0; at < data.size();) {
            const char byte = data[at];
            const std::size_t other = data.find_first_not_of(byte, at);
            std::size_t run = std::min(other, data.size()) - at;
            for (std::size_t count = 0; count < run; ++count) {
                sum = (sum + static_cast<std::uint8_t>(byte)) % 65521U;
                sum_of_sums = (sum_of_sums + sum) % 65521U;
            }
            at += run;
            put_byte(static_cast<std::uint8_t>(byte));
            for (--run; run >= 3;) {
                const std::size_t length = run >= 258 ? 258 : std::min<std::size_t>(run, 10);
                put_run(length);
                run -= length;
            }
            for (; run > 0; --run) {
                put_byte(static_cast<std::uint8_t>(byte));
            }
        }
        put_code(0, 7); // the end of the block
        return stream_ + number(std::size_t{sum_of_sums} << 16U | sum);
    }

    std::vector<std::uint32_t> palette_;
    std::string stream_;
    std::size_t bits_ = 0;
};

} // namespace kv408
