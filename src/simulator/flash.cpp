#include "simulator/flash.h"

#include <array>
#include <ios>
#include <sstream>
#include <string>
#include <utility>

namespace kv408::simulator {
namespace {

constexpr std::array<std::uint16_t, record_size> neutral_record = {
    2048, 2048, 2048, 2048, 10000, 10000, 10000, 10000, 10000, 100, 70};

constexpr std::uint16_t simulated_hardware_id = 408;
constexpr std::uint16_t simulated_firmware_id = 16;

} // namespace

FlashPlace kept_flash(Files& files, const std::filesystem::path& settings) {
    if (files.create_folder(settings).status != FileStatus::done) {
        return {};
    }
    return {.files = &files, .path = settings / "simulated-flash.bin"};
}

Flash::Flash(FlashPlace place) : place_(std::move(place)) {
    load();
}

std::uint16_t Flash::read(std::uint16_t address) const {
    const auto found = words_.find(address);
    return found == words_.end() ? erased_word : found->second;
}

void Flash::write(std::uint16_t address, std::uint16_t word) {
    words_[address] = word;
    save();
}

std::int16_t Flash::record(std::uint16_t index) const {
    return static_cast<std::int16_t>(read(static_cast<std::uint16_t>(record_address + index)));
}

void Flash::write_neutral_record() {
    for (std::uint16_t index = 0; index < record_size; ++index) {
        words_[static_cast<std::uint16_t>(record_address + index)] = neutral_record.at(index);
    }
    words_[hardware_id_address] = simulated_hardware_id;
    words_[firmware_id_address] = simulated_firmware_id;
    words_[marker_address] = written_marker;
    save();
}

void Flash::load() {
    std::string bytes;
    if (place_.files == nullptr ||
        place_.files->read(place_.path, bytes).status != FileStatus::done) {
        return;
    }
    std::istringstream stream(bytes);
    std::string text;
    while (std::getline(stream, text)) {
        std::istringstream line(text);
        unsigned long address = 0;
        unsigned long word = 0;
        if (line >> std::hex >> address >> word && address <= 0xFFFF && word <= 0xFFFF) {
            words_[static_cast<std::uint16_t>(address)] = static_cast<std::uint16_t>(word);
        }
    }
}

void Flash::save() {
    if (place_.files == nullptr) {
        return;
    }
    std::ostringstream stream;
    stream << std::hex << std::uppercase;
    for (const auto& [address, word] : words_) {
        stream << address << ' ' << word << '\n';
    }
    saved_ = place_.files->replace(place_.path, stream.str()).status == FileStatus::done;
}

} // namespace kv408::simulator
