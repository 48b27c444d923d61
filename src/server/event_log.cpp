#include "server/event_log.h"

#include "host/shown_text.h"

namespace kv408 {

bool ToldOnce::first(const std::string& text) {
    constexpr std::size_t most = 100; // serial numbers may be any texts
    return told_.size() < most && told_.insert(text).second;
}

void EventLog::write(const std::string& text) {
    out_ << shown_line(text) << std::endl;
}

bool EventLog::write_trouble(const std::string& text) {
    const bool first = told_.first(text);
    if (first) {
        write(text);
    }
    return first;
}

} // namespace kv408
