#pragma once

#include <cstdlib>
#include <stdexcept>

#include <unistd.h>

namespace kv408 {

/// Acts as a user without rights for its lifetime, where the test runs as root.
class PlainUser {
public:
    PlainUser() : before_(geteuid()) {
        constexpr uid_t nobody = 65534;
        if (before_ == 0 && seteuid(nobody) != 0) {
            throw std::runtime_error("cannot become a plain user");
        }
    }
    ~PlainUser() {
        if (seteuid(before_) != 0) {
            std::abort();
        }
    }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

private:
    uid_t before_;
};

} // namespace kv408
