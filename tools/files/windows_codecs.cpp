// PNG and JPEG through the imaging component of Windows.
#include "failure.h"
#include "files/codecs.h"

#include <initguid.h>
#include <wincodec.h>

#include <utility>

namespace host
{
namespace
{
/// High enough that a second save shows nothing.
constexpr float quality = 0.95F;

void check(HRESULT result, const char* what)
{
    if (FAILED(result))
        throw Failure(what);
}

/// Owns an interface; a component hands it out through place().
template <class Interface>
class Owned
{
public:
    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned()
    {
        if (pointer != nullptr)
            pointer->Release();
    }
    Interface** place() { return &pointer; }
    Interface* operator->() const { return pointer; }
    Interface* get() const { return pointer; }

private:
    Interface* pointer = nullptr;
};

IWICImagingFactory& factory()
{
    static Owned<IWICImagingFactory> made;
    if (made.get() == nullptr) {
        check(CoInitializeEx(nullptr, COINIT_MULTITHREADED), "the system's components do not start");
        check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(IWICImagingFactory), // NOLINT(language-extension-token)
                               reinterpret_cast<void**>(made.place())),
              "the system's imaging component is missing");
    }
    return *made.get();
}

Picture decode(std::span<const uint8_t> file)
{
    constexpr const char* spoilt = "the system cannot read it: it is damaged or cut short";
    Owned<IWICStream> stream;
    Owned<IWICBitmapDecoder> decoder;
    Owned<IWICBitmapFrameDecode> frame;
    Owned<IWICBitmapSource> converted;
    check(factory().CreateStream(stream.place()), spoilt);
    check(stream->InitializeFromMemory(const_cast<BYTE*>(file.data()), static_cast<DWORD>(file.size())), spoilt);
    check(factory().CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, decoder.place()),
          spoilt);
    check(decoder->GetFrame(0, frame.place()), spoilt);
    check(WICConvertBitmapSource(GUID_WICPixelFormat32bppBGRA, frame.get(), converted.place()), spoilt);
    UINT width = 0;
    UINT height = 0;
    check(converted->GetSize(&width, &height), spoilt);
    Picture picture = makePicture(width, height);
    check(converted->CopyPixels(nullptr, width * 4, static_cast<UINT>(picture.bytes.size()), picture.bytes.data()),
          spoilt);
    return picture;
}

/// Rows of pixels in an order of bytes that an encoder takes.
struct Rows
{
    WICPixelFormatGUID format;
    UINT stride;
    std::vector<uint8_t> bytes;
};

void chooseQuality(IPropertyBag2& options)
{
    wchar_t name[] = L"ImageQuality";
    PROPBAG2 option = {};
    option.pstrName = name;
    VARIANT value = {};
    value.vt = VT_R4;
    value.fltVal = quality;
    check(options.Write(1, &option, &value), "the system's JPEG encoder takes no quality");
}

Bytes contentOf(IStream* memory)
{
    HGLOBAL handle = nullptr;
    STATSTG status = {};
    check(GetHGlobalFromStream(memory, &handle), "no memory to encode in");
    check(memory->Stat(&status, STATFLAG_NONAME), "no memory to encode in");
    const auto* const first = static_cast<const uint8_t*>(GlobalLock(handle));
    Bytes file(first, first + status.cbSize.QuadPart);
    GlobalUnlock(handle);
    return file;
}

Bytes encode(const Picture& picture, const GUID& container, Rows rows)
{
    constexpr const char* failed = "the system cannot encode it";
    Owned<IStream> memory;
    Owned<IWICBitmapEncoder> encoder;
    Owned<IWICBitmapFrameEncode> frame;
    Owned<IPropertyBag2> options;
    check(factory().CreateEncoder(container, nullptr, encoder.place()), failed);
    check(CreateStreamOnHGlobal(nullptr, TRUE, memory.place()), failed);
    check(encoder->Initialize(memory.get(), WICBitmapEncoderNoCache), failed);
    check(encoder->CreateNewFrame(frame.place(), options.place()), failed);
    if (container == GUID_ContainerFormatJpeg)
        chooseQuality(*options.get());
    check(frame->Initialize(options.get()), failed);
    check(frame->SetSize(static_cast<UINT>(picture.width), static_cast<UINT>(picture.height)), failed);
    WICPixelFormatGUID taken = rows.format;
    check(frame->SetPixelFormat(&taken), failed);
    if (!(taken == rows.format))
        throw Failure(failed);
    check(frame->WritePixels(static_cast<UINT>(picture.height), rows.stride, static_cast<UINT>(rows.bytes.size()),
                             rows.bytes.data()),
          failed);
    check(frame->Commit(), failed);
    check(encoder->Commit(), failed);
    return contentOf(memory.get());
}
} // namespace

Picture decodePng(std::span<const uint8_t> file)
{
    return decode(file);
}

Picture decodeJpeg(std::span<const uint8_t> file)
{
    return decode(file);
}

Bytes encodePng(const Picture& picture)
{
    return encode(picture, GUID_ContainerFormatPng,
                  {GUID_WICPixelFormat32bppBGRA, static_cast<UINT>(picture.width) * 4, picture.bytes});
}

Bytes encodeJpeg(const Picture& picture)
{
    Rows rows{GUID_WICPixelFormat24bppBGR, static_cast<UINT>(picture.width) * 3, {}};
    rows.bytes.reserve(picture.bytes.size() / 4 * 3);
    for (size_t i = 0; i < picture.bytes.size(); i += 4)
        rows.bytes.insert(rows.bytes.end(), picture.bytes.begin() + static_cast<ptrdiff_t>(i),
                          picture.bytes.begin() + static_cast<ptrdiff_t>(i) + 3);
    return encode(picture, GUID_ContainerFormatJpeg, std::move(rows));
}
} // namespace host
