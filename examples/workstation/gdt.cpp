#include "gdt.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

namespace {

constexpr std::size_t kLengthDigits = 3;
constexpr std::size_t kFieldDigits = 4;
constexpr std::size_t kLineOverhead = kLengthDigits + kFieldDigits + 2;  // with CR LF

constexpr UINT kSevenBit = 20127;

enum EField { RECORD_KIND = 8000, CHARACTER_SET = 9206, NUMBER = 3000, SURNAME = 3101, FIRST_NAME = 3102, BIRTHDAY = 3103 };

struct SLine {
    int field;
    std::string_view content;
};

std::optional<int> Number(std::string_view digits) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool whole = error == std::errc() && end == digits.data() + digits.size() && digits.front() != '-';
    return whole ? std::optional<int>(value) : std::nullopt;
}

// The next line without its end, as the file has it; what the length in front of it says is judged by Parse.
std::string_view TakeLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end == rest.npos ? rest.size() : end + 1);
    rest.remove_prefix(line.size());
    return line;
}

std::optional<SLine> Parse(std::string_view line) {
    if (line.size() < kLineOverhead || !line.ends_with("\r\n")) {
        return std::nullopt;
    }
    const std::optional<int> length = Number(line.substr(0, kLengthDigits));
    const std::optional<int> field = Number(line.substr(kLengthDigits, kFieldDigits));
    if (!length || !field || static_cast<std::size_t>(*length) != line.size()) {
        return std::nullopt;
    }
    return SLine{*field, line.substr(kLengthDigits + kFieldDigits, line.size() - kLineOverhead)};
}

// One record while it is read. Texts stay bytes until its end, because the character set may follow them.
class Record {
public:
    explicit Record(int line) { m_patient.line = line; }

    void Take(const SLine& line) {
        switch (line.field) {
            case CHARACTER_SET:
                m_characterSet = line.content;
                break;
            case NUMBER:
                m_number = line.content;
                break;
            case SURNAME:
                m_surname = line.content;
                break;
            case FIRST_NAME:
                m_firstName = line.content;
                break;
            case BIRTHDAY:
                m_birthday = line.content;
                break;
            default:  // address, insurance and the like are not ours
                break;
        }
    }

    void Finish(SGdtFile& file) {
        const UINT codePage = CodePage(file);
        m_patient.number = Decode(m_number, codePage, file);
        m_patient.surname = Decode(m_surname, codePage, file);
        m_patient.firstName = Decode(m_firstName, codePage, file);
        m_patient.birthday = Decode(m_birthday, codePage, file);
        file.patients.push_back(m_patient);
    }

private:
    UINT CodePage(SGdtFile& file) const {
        if (m_characterSet == "1") {
            return kSevenBit;
        }
        if (m_characterSet == "3") {
            return 1252;
        }
        if (!m_characterSet.empty() && m_characterSet != "2") {
            file.problems.push_back({m_patient.line, _T("unknown character set, read as code page 437")});
        }
        return 437;
    }

    CString Decode(std::string_view bytes, UINT codePage, SGdtFile& file) const {
        const int size = static_cast<int>(bytes.size());
        CString text;
        if (codePage == kSevenBit) {  // the system's own conversion would make other characters of what does not belong there
            std::transform(bytes.begin(), bytes.end(), text.GetBuffer(size), SevenBitUnit);
            text.ReleaseBuffer(size);
            if (text.Find(kReplacement) >= 0) {
                file.problems.push_back({m_patient.line, _T("characters that a seven-bit record cannot hold were replaced")});
            }
            return text;
        }
        const int length = MultiByteToWideChar(codePage, 0, bytes.data(), size, text.GetBuffer(size + 1), size);
        text.ReleaseBuffer(length);
        return text;
    }

    static constexpr TCHAR kReplacement = 0xFFFD;

    static TCHAR SevenBitUnit(char c) {
        constexpr unsigned char kDelete = 0x7F;
        const auto byte = static_cast<unsigned char>(c);
        return byte != 0 && byte < kDelete ? static_cast<TCHAR>(byte) : kReplacement;
    }

    SGdtPatient m_patient;
    std::string_view m_characterSet;
    std::string_view m_number;
    std::string_view m_surname;
    std::string_view m_firstName;
    std::string_view m_birthday;
};

}  // namespace

SGdtFile ReadGdt(std::string_view bytes) {
    SGdtFile file;
    std::optional<Record> record;
    bool between = false;  // behind a damaged line, until the next record begins
    for (int number = 1; !bytes.empty(); ++number) {
        const std::optional<SLine> line = Parse(TakeLine(bytes));
        if (!line) {
            file.problems.push_back(
                {number, record || between ? _T("damaged line, its record is left out") : _T("not a GDT line")});
            file.damaged += record || !between ? 1 : 0;
            record.reset();
            between = true;
        } else if (line->field == RECORD_KIND) {
            if (record) {
                record->Finish(file);
            }
            record.emplace(number);
            between = false;
        } else if (record) {
            record->Take(*line);
        } else if (!between) {
            file.problems.push_back({number, _T("field outside a record")});
            between = true;
        }
    }
    if (record) {
        record->Finish(file);
    }
    return file;
}
