#pragma once

#include <afxwin.h>

namespace kadata {

// The message that the thread handles is this one, as long as the object lives.
class LastMessage {
public:
    explicit LastMessage(const MSG& message) : m_before(AfxGetThreadState()->m_lastSentMsg) {
        AfxGetThreadState()->m_lastSentMsg = message;
    }
    LastMessage(const LastMessage&) = delete;
    LastMessage& operator=(const LastMessage&) = delete;
    ~LastMessage() { AfxGetThreadState()->m_lastSentMsg = m_before; }

private:
    const MSG m_before;
};

}  // namespace kadata
