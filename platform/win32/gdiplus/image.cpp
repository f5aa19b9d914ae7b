#include <new>
#include <utility>

#include "codecs.h"
#include "gdiplus_image.h"
#include "startup.h"
#include "store_copy.h"

namespace Gdiplus {

Image::Image(std::shared_ptr<kawin::PixelStore> store, Status otherwise) {
    Take(std::move(store), otherwise);
}

Image::Image(const WCHAR* filename, BOOL /*use_color_management*/) {
    kawin::ReadPicture read = kawin::ReadPictureFile(filename);
    Take(std::move(read.store), read.status);
}

Image::~Image() = default;

void Image::Take(std::shared_ptr<kawin::PixelStore> store, Status otherwise) {
    store_ = std::move(store);
    Told(store_ ? Ok : otherwise);
}

Image* Image::FromFile(const WCHAR* filename, BOOL use_color_management) {
    return new (std::nothrow) Image(filename, use_color_management);
}

Image* Image::Clone() const {
    auto copy = store_ ? kawin::CopyWhole(*store_) : nullptr;
    if (!copy) {
        Told(store_ ? OutOfMemory : InvalidParameter);
        return nullptr;
    }
    return new (std::nothrow) Image(std::move(copy), OutOfMemory);
}

Status Image::Save(const WCHAR* filename, const CLSID* encoder, const EncoderParameters* parameters) try {
    if (!kawin::IsGdiplusStarted()) {
        return Told(GdiplusNotInitialized);
    }
    if (!store_ || filename == nullptr || encoder == nullptr || parameters != nullptr) {
        return Told(InvalidParameter);
    }
    const kawin::MakeFile make = kawin::FindEncoder(*encoder);
    if (make == nullptr) {
        return Told(UnknownImageFormat);
    }
    const std::vector<std::byte> file = make(*store_);
    return Told(!file.empty() && kawin::WriteWholeFile(filename, file) ? Ok : GenericError);
} catch (const std::bad_alloc&) {
    return Told(OutOfMemory);
}

UINT Image::GetWidth() const {
    Told(store_ ? Ok : InvalidParameter);
    return store_ ? static_cast<UINT>(store_->Width()) : 0;
}

UINT Image::GetHeight() const {
    Told(store_ ? Ok : InvalidParameter);
    return store_ ? static_cast<UINT>(store_->Height()) : 0;
}

PixelFormat Image::GetPixelFormat() const {
    Told(store_ ? Ok : InvalidParameter);
    return store_ ? store_->Format() : PixelFormatUndefined;
}

ImageType Image::GetType() const {
    Told(store_ ? Ok : InvalidParameter);
    return store_ ? ImageTypeBitmap : ImageTypeUnknown;
}

Status Image::GetLastStatus() const {
    return TakeLastStatus();
}

}  // namespace Gdiplus
