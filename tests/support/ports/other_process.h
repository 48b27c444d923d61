#pragma once

#include <string>

#include <sys/types.h>

namespace kv408 {

/// Another process, which lives as long as this object and does what it is made for.
class OtherProcess {
public:
    /// What the process does with a device before it waits for its end.
    struct Deed {
        std::string opens;  ///< device node that it opens; empty: none
        bool locks = false; ///< it locks the device
        bool marks = false; ///< it keeps others from opening the device
    };

    /// A process whose program is called `name` has done `deed` when this returns.
    OtherProcess(const char* name, const Deed& deed);
    ~OtherProcess();
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// Its id.
    [[nodiscard]] pid_t id() const { return id_; }

    /// How it is called where it stands in the way: "name (process 4711)".
    [[nodiscard]] std::string title() const;

private:
    std::string name_;
    pid_t id_;
};

} // namespace kv408
