#pragma once

#include <ostream>
#include <set>
#include <string>

namespace kv408 {

/// Texts that are told once, until all is well again.
class ToldOnce {
public:
    /// True where `text` has not been told; from then on it has.
    bool first(const std::string& text);

    /// All is well again: any text is told anew.
    void forget() { told_.clear(); }

private:
    std::set<std::string> told_;
};

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
    void note_well() { told_.forget(); }

private:
    std::ostream& out_;
    ToldOnce told_; ///< the trouble since all was well
};

} // namespace kv408
