#include <stdexcept>

#include "directory_test_support.h"

namespace {

constexpr int kThrows = -1, kThrowsFileException = -2;

struct Row {
    TCHAR letter;
    UINT type = DRIVE_REMOVABLE;
    std::optional<ULONGLONG> bytes = 20 << 20;
    std::optional<CString> label = CString(_T("SCANS"));
    int bus = 7;
};

struct FakeDrives final : IDriveTable {
    explicit FakeDrives(std::vector<Row> rows) : m_rows(std::move(rows)) {}
    DWORD LogicalDrives() const override {
        return std::accumulate(m_rows.begin(), m_rows.end(), DWORD{0},
                               [](DWORD mask, const Row& row) { return mask | 1U << (row.letter - _T('A')); });
    }
    UINT DriveType(const CString& root) const override { return Find(root[0]).type; }
    std::optional<ULONGLONG> TotalBytes(const CString& root) const override { return Find(root[0]).bytes; }
    std::optional<CString> VolumeLabel(const CString& root) const override { return Find(root[0]).label; }
    int BusType(TCHAR letter) const override {
        const int bus = Find(letter).bus;
        if (bus == kThrowsFileException)
            AfxThrowFileException(CFileException::genericException);
        return bus == kThrows ? throw std::runtime_error("gone") : bus;
    }
    const Row& Find(TCHAR letter) const {
        return *std::find_if(m_rows.begin(), m_rows.end(), [=](const Row& row) { return row.letter == letter; });
    }

    std::vector<Row> m_rows;
};

}  // namespace

TEST(DirectoryDrives, TheFirstSuitableOneIsFound) {
    const Row good{.letter = _T('H')};
    const struct {
        std::vector<Row> drives;
        LPCTSTR label;
        int requireUsb;
        const char *drive, *foundLabel;
    } rows[] = {{{}, nullptr, 0, "", ""},
                {{{.letter = _T('A')}, good}, _T(""), 1, "A:\\", "SCANS"},
                {{{.letter = _T('D'), .bytes = std::nullopt}, good}, nullptr, 0, "H:\\", "SCANS"},
                {{{.letter = _T('D'), .bytes = (20 << 20) - 1}, good}, nullptr, 0, "H:\\", "SCANS"},
                {{{.letter = _T('D'), .label = std::nullopt}, good}, nullptr, 0, "H:\\", "SCANS"},
                {{{.letter = _T('D'), .label = CString(_T("SCAN"))}, good}, _T("scans"), 0, "H:\\", "SCANS"},
                {{{.letter = _T('D'), .label = CString()}, good}, nullptr, 0, "D:\\", ""},
                {{{.letter = _T('D'), .bus = 11}, good}, nullptr, 1, "H:\\", "SCANS"},
                {{{.letter = _T('D'), .bus = kThrows}, good}, nullptr, 0, "D:\\", "SCANS"},
                {{{.letter = _T('D'), .bus = kThrows}, {.letter = _T('E'), .bus = kThrowsFileException}}, nullptr, 1, "", ""}};
    for (const auto& row : rows) {
        CString drive = _T("old"), label = _T("old");
        const int found = CDirectory::FindRemovableUsbDrive(FakeDrives(row.drives), row.label, drive, label, row.requireUsb);
        EXPECT_EQ(found != 0, *row.drive != 0);
        test::ExpectTexts({{drive, row.drive}, {label, row.foundLabel}});
    }
    CString drive, label = _T("no medium of this system has this label");
    EXPECT_EQ(CDirectory::FindRemovableUsbDrive(label, drive, label, 1), 0);
    test::ExpectTexts({{drive, ""}, {label, ""}});
}
