// An exception before the user.

#include <kadata/skin_message_box.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>
#include <atomic>

#include "message_texts.h"

namespace {

using namespace message_texts;

constexpr UINT kDataMessage = 1058;
constexpr UINT kOtherDataMessage = 1059;
constexpr UINT kRelatedDataMessage = 1062;
constexpr UINT kMessageSize = 1024;  // of a box without details, terminator included
constexpr UINT kPlaceSize = 512;     // of file and line, likewise
constexpr UINT kAskStyle = MB_YESNO | MB_ICONHAND | MB_DEFBUTTON2;
constexpr LPCTSTR kParagraph = _T("\n\n");

std::atomic<CTarvoException::BoxFunction>& OtherBox() {
    static constinit std::atomic<CTarvoException::BoxFunction> show{nullptr};
    return show;
}

int Show(const CString& text, UINT style) {
    const CTarvoException::BoxFunction other = OtherBox().load();
    return other != nullptr ? other(text, style) : AfxSkinMessageBox(text.GetString(), style);
}

// Whether the user wants details.
bool Ask(const CString& message) {
    return Show(message + kParagraph + Load(kAskForDetails), kAskStyle) == IDYES;
}

CString NameOf(const CString& file) {
    const int separator = std::max(file.ReverseFind(_T('\\')), file.ReverseFind(_T('/')));
    return file.Mid(separator + 1);
}

}  // namespace

CTarvoException::BoxFunction CTarvoException::SetBoxFunction(BoxFunction show) {
    return OtherBox().exchange(show);
}

void CTarvoException::Display() {
    UINT icon = MB_ICONHAND;
    switch (m_eDisplayMode) {
        case eNothing:
            return;
        case eError:
            break;
        case eWarning:
            icon = MB_ICONEXCLAMATION;
            break;
        case eInformation:
            icon = MB_ICONASTERISK;
            break;
        default:
            DisplayWithDetails();
            return;
    }
    const CString details = GetMessageDetails();
    Show(details.IsEmpty() ? GetMessageText() : GetMessageText() + _T("\n") + details, icon);
}

void CTarvoException::DisplayWithDetails() {
    if (m_uiMessageID == kOtherDataMessage) {
        m_uiMessageID = kDataMessage;
    }
    const CString details = GetMessageDetails();
    if (details.IsEmpty()) {
        Show(Cut(GetMessageText(), kMessageSize), MB_ICONHAND);
    } else if (Ask(GetMessageText())) {
        const bool ofData = m_uiMessageID == kDataMessage || m_uiMessageID == kRelatedDataMessage;
        Show(Load(kDetailsHead) + _T("\n") + details + kParagraph + Load(ofData ? kHintForData : kHint) + kParagraph +
                 Load(kDetailsEnd),
             MB_ICONEXCLAMATION);
    }
}

void CTarvoException::DisplayUnhandledException(UINT id, const char* file, UINT line) {
    CString message = Load(id);
    if (message.IsEmpty()) {
        message = _T("Unknown Message ID");
    }
    if (!Ask(message)) {
        return;
    }
    CString text = Load(kDetailsHead);
    if (file != nullptr) {
        CString place;
        place.Format(_T("%s%s\n%s%u"), Load(kFileLabel), NameOf(CString(file)), Load(kLineLabel), line);
        text += _T("\n") + Cut(place, kPlaceSize);
    }
    Show(text + kParagraph + Load(kHintForData) + kParagraph + Load(kDetailsEnd), MB_ICONEXCLAMATION);
}
