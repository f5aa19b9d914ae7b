#include "x_errors.h"

#include "../modules/late_library.h"

namespace kawin {

// XSetErrorHandler(3): the handler's result is not used.
IgnoredXErrors::IgnoredXErrors() noexcept {
    const LateLibrary xlib(u"libX11.so.6");
    if (xlib.Find("XSetErrorHandler", set_)) {
        before_ = set_([](void* /*display*/, void* /*error*/) { return 0; });
    }
}

IgnoredXErrors::~IgnoredXErrors() {
    if (set_ != nullptr) {
        set_(before_);
    }
}

}  // namespace kawin
