// What a TIFF file tells of itself, read with libtiff.

#include <kadata/image_info.h>
#include <kadata/utils.h>
#include <tiffio.h>

#include <atomic>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "image_name.h"

namespace {

constexpr std::string_view DATE_TIME_FORM = "0000:00:00 00:00:00";
constexpr std::string_view WHITE_SPACE = " \t\r\n\v\f";
constexpr std::size_t LONGEST_TAKE_TYPE = 4;
constexpr tmsize_t MOST_BYTES_OF_A_TAG = 4 * 1024 * 1024;
// Read only, not mapped into memory, and neither strips nor tiles are looked at.
constexpr const char* OPEN_MODE = "rmDC";

std::atomic<CQuintarTIFF::ImageInfoReader>& TheReader() {
    static constinit std::atomic<CQuintarTIFF::ImageInfoReader> reader = &CQuintarTIFF::ReadStandardTags;
    return reader;
}

// The file as libtiff asks for it. No exception may pass through the library: the first failure is kept until it has returned.
class PictureFile {
public:
    explicit PictureFile(const CString& path) : m_file(path, CFile::modeRead | CFile::shareDenyNone) {}
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;
    ~PictureFile() { Keep(nullptr); }

    void ThrowFailure() {
        if (m_failure != nullptr) {
            throw std::exchange(m_failure, nullptr);
        }
    }

    static tmsize_t Read(thandle_t file, void* target, tmsize_t count) {
        return Call<tmsize_t>(file, [=](CFile& f) { return f.Read(target, static_cast<UINT>(count)); });
    }
    static tmsize_t Write(thandle_t /*file*/, void* /*source*/, tmsize_t /*count*/) { return -1; }
    static toff_t Seek(thandle_t file, toff_t offset, int from) {
        return Call<toff_t>(file, [=](CFile& f) { return f.Seek(static_cast<LONGLONG>(offset), static_cast<UINT>(from)); });
    }
    static int Close(thandle_t /*file*/) { return 0; }  // it is closed where it was opened
    static toff_t Size(thandle_t file) {
        return Call<toff_t>(file, [](CFile& f) { return f.GetLength(); });
    }

private:
    // -1 is how libtiff is told of a failure.
    template <class Result, class Action>
    static Result Call(thandle_t file, Action action) {
        auto* const self = static_cast<PictureFile*>(file);
        try {
            return static_cast<Result>(action(self->m_file));
        } catch (CFileException* e) {
            self->Keep(e);
            return static_cast<Result>(-1);
        }
    }
    void Keep(CFileException* failure) {
        if (m_failure != nullptr) {
            m_failure->Delete();
        }
        m_failure = failure;
    }

    CFile m_file;
    CFileException* m_failure = nullptr;  // owned
};

// Nothing goes to the standard error or to handlers of the host.
int Quiet(TIFF* /*tiff*/, void* /*data*/, const char* /*module*/, const char* /*format*/, va_list /*arguments*/) {
    return 1;
}

struct Closer {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using Tiff = std::unique_ptr<TIFF, Closer>;

// Null when it is no TIFF file or a damaged one.
Tiff Open(PictureFile& file) {
    const std::unique_ptr<TIFFOpenOptions, Closer> options(TIFFOpenOptionsAlloc());
    if (options == nullptr) {
        return nullptr;
    }
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), Quiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), Quiet, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), MOST_BYTES_OF_A_TAG);
    return Tiff(TIFFClientOpenExt("picture", OPEN_MODE, &file, PictureFile::Read, PictureFile::Write, PictureFile::Seek,
                                  PictureFile::Close, PictureFile::Size, nullptr, nullptr, options.get()));
}

// The first line that holds anything; empty when the file has no such tag.
std::string_view FirstLine(const Tiff& tiff, uint32_t tag) {
    const char* value = nullptr;
    if (TIFFGetField(tiff.get(), tag, &value) == 0 || value == nullptr) {
        return {};
    }
    std::string_view line(value);
    line.remove_prefix(std::min(line.find_first_not_of(WHITE_SPACE), line.size()));
    line = line.substr(0, line.find_first_of("\r\n"));
    return line.substr(0, line.find_last_not_of(WHITE_SPACE) + 1);
}

bool IsDateTime(std::string_view text) {
    return std::equal(text.begin(), text.end(), DATE_TIME_FORM.begin(), DATE_TIME_FORM.end(),
                      [](char c, char form) { return form == '0' ? c >= '0' && c <= '9' : c == form; });
}

std::optional<CTime> ParsedDateTime(std::string_view text) {
    if (!IsDateTime(text)) {
        return std::nullopt;
    }
    const auto number = [text](std::size_t at, std::size_t digits) { return std::stoi(std::string(text.substr(at, digits))); };
    const int day = number(8, 2);
    try {
        const CTime time(number(0, 4), number(5, 2), day, number(11, 2), number(14, 2), number(17, 2));
        return time.GetDay() == day ? std::optional(time) : std::nullopt;  // a day that the month does not have runs over
    } catch (CInvalidArgException* e) {
        e->Delete();
        return std::nullopt;
    }
}

CImageInfo::EImageType TypeOf(std::string_view takeType) {
    CImageInfo code;
    if (takeType.size() <= LONGEST_TAKE_TYPE) {
        code.SetImageTypeByTakeType(std::string(takeType).c_str());
    }
    return code.GetImageType() == CImageInfo::Unknown ? CImageInfo::Video : code.GetImageType();
}

}  // namespace

CImageInfo CQuintarTIFF::ReadImageInfoFromFile(const CString& path) {
    return TheReader().load()(path);
}

CQuintarTIFF::ImageInfoReader CQuintarTIFF::SetImageInfoReader(ImageInfoReader reader) {
    return TheReader().exchange(reader != nullptr ? reader : &ReadStandardTags);
}

CImageInfo CQuintarTIFF::ReadStandardTags(const CString& path) {
    PictureFile file(path);
    const Tiff tiff = Open(file);
    file.ThrowFailure();
    if (tiff == nullptr) {
        AfxThrowFileException(CFileException::genericException, -1, path);
    }
    CImageInfo image;
    image.SetFilePath(path);
    const std::string_view name = FirstLine(tiff, TIFFTAG_IMAGEDESCRIPTION);
    image.SetImageName(name.empty() ? kadata::ImageNameOf(path) : CKalidoUtils::MB2WC(name));
    image.SetTooth(CKalidoUtils::MB2WC(FirstLine(tiff, TIFFTAG_PAGENAME)));
    image.SetImageType(TypeOf(FirstLine(tiff, TIFFTAG_DOCUMENTNAME)));
    image.SetTakeDateTime(ParsedDateTime(FirstLine(tiff, TIFFTAG_DATETIME)).value_or(CTime()));
    return image;
}
