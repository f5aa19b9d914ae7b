// The captions of the message box, and which buttons a style has.

#include <kadata/skin_message_box.h>

#include <algorithm>
#include <iterator>

namespace {

using Box = CSkinMessageBox;

// Where the number of each caption stands in the skin, and what is shown without a skin.
constexpr struct {
    UINT SkinInfo::*number;
    LPCTSTR plain;
} CAPTIONS[Box::STRINGS] = {{&SkinInfo::nOKTextID, _T("OK")},
                            {&SkinInfo::nCancelTextID, _T("Cancel")},
                            {&SkinInfo::nAbortTextID, _T("&Abort")},
                            {&SkinInfo::nRetryTextID, _T("&Retry")},
                            {&SkinInfo::nIgnoreTextID, _T("&Ignore")},
                            {&SkinInfo::nIgnoreAllTextID, _T("I&gnore all")},
                            {&SkinInfo::nContinueTextID, _T("&Continue")},
                            {&SkinInfo::nYesTextID, _T("&Yes")},
                            {&SkinInfo::nYesToAllTextID, _T("Yes to &all")},
                            {&SkinInfo::nNoTextID, _T("&No")},
                            {&SkinInfo::nNoToAllTextID, _T("N&o to all")},
                            {&SkinInfo::nSaveTextID, _T("&Save")},
                            {&SkinInfo::nDiscardTextID, _T("&Discard")},
                            {&SkinInfo::nHelpTextID, _T("&Help")},
                            {&SkinInfo::nDoNotShowAgainTextID, _T("&Do not show this message again")},
                            {&SkinInfo::nRememberAnswerTextID, _T("Re&member my answer")}};

struct TypeButton {
    Box::tagMSGBOXBTN button;
    UINT onlyWith = 0;  // a bit of the style; 0: always
};

struct Type {
    int defaultCommand;
    int escapeCommand;  // 0: none
    TypeButton buttons[5];
};

constexpr TypeButton BUTTON_OK = {{IDOK, Box::StringOK}};
constexpr TypeButton BUTTON_CANCEL = {{IDCANCEL, Box::StringCancel}};
constexpr TypeButton BUTTON_ABORT = {{IDABORT, Box::StringAbort}};
constexpr TypeButton BUTTON_RETRY = {{IDRETRY, Box::StringRetry}};
constexpr TypeButton BUTTON_IGNORE = {{IDIGNORE, Box::StringIgnore}};
constexpr TypeButton BUTTON_YES = {{IDYES, Box::StringYes}};
constexpr TypeButton BUTTON_YES_TO_ALL = {{IDYESTOALL, Box::StringYesToAll}, MB_YESTOALL};
constexpr TypeButton BUTTON_NO = {{IDNO, Box::StringNo}};
constexpr TypeButton BUTTON_NO_TO_ALL = {{IDNOTOALL, Box::StringNoToAll}, MB_NOTOALL};
constexpr TypeButton BUTTON_TRY_AGAIN = {{IDTRYAGAIN, Box::StringRetry}};
constexpr TypeButton BUTTON_CONTINUE = {{IDCONTINUE, Box::StringContinue}};
constexpr TypeButton BUTTON_SAVE = {{IDSAVE, Box::StringSave}};
constexpr TypeButton BUTTON_DISCARD = {{IDDISCARD, Box::StringDiscard}};
constexpr TypeButton BUTTON_IGNORE_ALL = {{IDIGNOREALL, Box::StringIgnoreAll}};

// By the lowest four bits of the style; those behind the end are MB_OK. Deliberate: some types have no escape button, and of
// MB_CANCELTRYCONTINUE the last button is the default.
constexpr Type TYPES[] = {{IDOK, IDOK, {BUTTON_OK}},
                          {IDOK, IDCANCEL, {BUTTON_OK, BUTTON_CANCEL}},
                          {IDABORT, 0, {BUTTON_ABORT, BUTTON_RETRY, BUTTON_IGNORE}},
                          {IDYES, IDCANCEL, {BUTTON_YES, BUTTON_YES_TO_ALL, BUTTON_NO, BUTTON_NO_TO_ALL, BUTTON_CANCEL}},
                          {IDYES, 0, {BUTTON_YES, BUTTON_YES_TO_ALL, BUTTON_NO, BUTTON_NO_TO_ALL}},
                          {IDRETRY, IDCANCEL, {BUTTON_RETRY, BUTTON_CANCEL}},
                          {IDCANCEL, IDCANCEL, {BUTTON_TRY_AGAIN, BUTTON_CONTINUE, BUTTON_CANCEL}},
                          {IDCONTINUE, 0, {BUTTON_CONTINUE, BUTTON_ABORT}},
                          {IDSAVE, IDCANCEL, {BUTTON_SAVE, BUTTON_DISCARD, BUTTON_CANCEL}},
                          {IDIGNORE, IDCANCEL, {BUTTON_IGNORE, BUTTON_IGNORE_ALL, BUTTON_CANCEL}}};

// Of the default button, counted from 0; 0 for none, too.
std::size_t DefaultIndexOf(UINT style) {
    const UINT index = (style & MB_DEFMASK) / MB_DEFBUTTON2;
    return index <= MB_DEFBUTTON6 / MB_DEFBUTTON2 ? index : 0;
}

bool IsCaption(CSkinMessageBox::EString which) {
    return which >= Box::StringOK && which < Box::STRINGS;
}

}  // namespace

void CSkinMessageBox::SetString(EString which, const CString& text) {
    if (IsCaption(which)) {
        m_strings[which] = text;
    }
}

BOOL CSkinMessageBox::SetString(EString which, UINT resourceID) {
    return IsCaption(which) && Load(m_strings[which], resourceID);
}

CString CSkinMessageBox::GetString(EString which) const {
    return IsCaption(which) ? m_strings[which] : CString();
}

void CSkinMessageBox::CreateStrings() {
    const SkinInfo& skin = GetSkinInfo();
    for (std::size_t i = 0; i < m_strings.size(); ++i) {
        const UINT number = skin.*CAPTIONS[i].number;
        if (m_strings[i].IsEmpty() && (number == 0 || !Load(m_strings[i], number))) {
            m_strings[i] = CAPTIONS[i].plain;
        }
    }
}

void CSkinMessageBox::ParseStyle() {
    const UINT number = m_style & MB_TYPEMASK;
    const Type& type = TYPES[number < std::size(TYPES) ? number : MB_OK];
    m_buttons.clear();
    for (const TypeButton& each : type.buttons) {
        if (each.button.nCommand != 0 && (m_style & each.onlyWith) == each.onlyWith) {
            m_buttons.push_back(each.button);
        }
    }
    if ((m_style & MB_HELP) != 0) {
        m_buttons.push_back({IDHELP, StringHelp});
    }
    m_defaultCommand = type.defaultCommand;
    m_escapeCommand = type.escapeCommand;
    const std::size_t index = DefaultIndexOf(m_style);
    if (index != 0 && index < m_buttons.size()) {
        m_defaultCommand = m_buttons[index].nCommand;
    }
}

bool CSkinMessageBox::HasButton(int command) const {
    return std::any_of(m_buttons.begin(), m_buttons.end(),
                       [command](const tagMSGBOXBTN& button) { return button.nCommand == command; });
}

// While the countdown runs the default button tells what is left.
CString CSkinMessageBox::CaptionOf(const tagMSGBOXBTN& button) const {
    const CString& plain = m_strings[button.nCaption];
    if (button.nCommand != m_defaultCommand || m_seconds == 0) {
        return plain;
    }
    CString caption;
    caption.Format(_T("%s = %d"), plain, static_cast<int>(m_seconds));
    return caption;
}
