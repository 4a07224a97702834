#pragma once
// What a file system refuses, it refuses to root as well, while one of these lives.

#include <unistd.h>

namespace mk_test {

class Unprivileged {
public:
    Unprivileged() {
        constexpr uid_t nobody = 65534;
        is_set_ = was_ == 0 && seteuid(nobody) == 0;
    }
    ~Unprivileged() {
        if (is_set_ && seteuid(was_) != 0)
            _exit(1); // all that follows would fail for no reason of its own
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    uid_t was_ = geteuid();
    bool is_set_ = false;
};

} // namespace mk_test
