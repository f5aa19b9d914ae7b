#include <unistd.h>

#include <cstdlib>

#include "unprivileged.h"

namespace test {
namespace {

constexpr unsigned kNobody = 65534;

void SwitchTo(unsigned group, unsigned user) {
    if (setegid(group) != 0 || seteuid(user) != 0) {
        std::abort();  // going on with the wrong rights would make every later result a lie
    }
}

}  // namespace

UnprivilegedScope::UnprivilegedScope() : active_(true), switched_(geteuid() == 0) {
    if (switched_) {
        SwitchTo(kNobody, kNobody);
    }
}

UnprivilegedScope::~UnprivilegedScope() {
    if (switched_) {
        if (seteuid(0) != 0) {
            std::abort();
        }
        SwitchTo(0, 0);
    }
}

}  // namespace test
