#pragma once

#include <kadata/skin_window.h>

namespace kadata {

// A message on its way: who is in the middle of it, and who comes after him. Detaching a handler moves `next` on in all of them,
// so none leads to a handler that is not attached any more.
struct SkinCall {
    HWND window;
    CSkinSubclassWnd* handler;  // null once it is deleted
    CSkinSubclassWnd* next;     // null: the procedure comes next
    WNDPROC procedure;
    SkinCall* outer;
};

// Tells a handler, which passes a message on, whether it is there still afterwards.
class HandlerWatch {
public:
    explicit HandlerWatch(CSkinSubclassWnd& handler);
    HandlerWatch(const HandlerWatch&) = delete;
    HandlerWatch& operator=(const HandlerWatch&) = delete;
    ~HandlerWatch();

    // Whether the handler exists and is attached to the window still. False for one that was not attached.
    bool Stays() const;

private:
    SkinCall m_call;
};

}  // namespace kadata
