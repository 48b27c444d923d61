#pragma once

#include <ostream>
#include <set>
#include <string>

namespace kv408 {

/// A line for each event. What goes wrong again and again is told once.
class EventLog {
public:
    explicit EventLog(std::ostream& out) : out_(out) {}

    /// Writes `text` as a line of its own, whatever is in it.
    void write(const std::string& text);

    /// The same for trouble; false, with nothing written, where that has been told since all was
    /// well.
    bool write_trouble(const std::string& text);

    /// All is well again: any trouble from now on is written anew.
    void note_well() { told_.clear(); }

private:
    std::ostream& out_;
    std::set<std::string> told_; ///< the trouble since all was well
};

} // namespace kv408
