#include "x_errors.h"

#include "../modules/modules.h"

namespace kawin {

// XSetErrorHandler(3): the handler's result is not used.
IgnoredXErrors::IgnoredXErrors() noexcept {
    const HMODULE xlib = LoadLibraryW(u"libX11.so.6");  // kept until the process ends
    set_ =
        xlib != nullptr ? reinterpret_cast<Setter>(reinterpret_cast<void*>(GetProcAddress(xlib, "XSetErrorHandler"))) : nullptr;
    if (set_ != nullptr) {
        before_ = set_([](void* /*display*/, void* /*error*/) { return 0; });
    }
}

IgnoredXErrors::~IgnoredXErrors() {
    if (set_ != nullptr) {
        set_(before_);
    }
}

}  // namespace kawin
