#include <algorithm>

#include "adapters/win32/front_end/bindings.h"
#include "adapters/win32/front_end/image.h"
#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"

namespace kestro::adapters::win32 {
namespace {

// Pixels of a plain screen.
constexpr int kSharpSize = 640;  // no picture is shown larger than that
constexpr int kPreferredSize = 120;
constexpr int kSmallestSize = 64;

/// Shows an image as large as it fits, in its own proportions.
class PictureBinding final : public ControlBinding {
 public:
  PictureBinding(forms::Picture& picture, HWND parent, BindingOwner& owner)
      : ControlBinding(picture, owner), picture_(picture) {
    Create(parent, L"STATIC", SS_OWNERDRAW);
  }

  [[nodiscard]] SizeHint Measure() const override {
    const int least = fonts().Scaled(kSmallestSize);
    const int wanted = fonts().Scaled(kPreferredSize);
    return {least, wanted, least, wanted, true, true};
  }
  void Place(const RECT& place) override {
    ControlBinding::Place(place);
    InvalidateRect(window(), nullptr, TRUE);
  }

  void OnDraw(const DRAWITEMSTRUCT& item) override {
    const RECT& room = item.rcItem;
    const LRESULT brush =
        SendMessageW(GetParent(window()), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(item.hDC),
                     reinterpret_cast<LPARAM>(window()));
    FillRect(item.hDC, &room, reinterpret_cast<HBRUSH>(brush));
    if (image_.empty() || IsRectEmpty(&room)) return;
    const int room_width = static_cast<int>(room.right - room.left);
    const int room_height = static_cast<int>(room.bottom - room.top);
    const int height_when_wide = std::max(MulDiv(image_.height, room_width, image_.width), 1);
    const bool wide = height_when_wide <= room_height;
    const int width = wide ? room_width : std::max(MulDiv(image_.width, room_height, image_.height), 1);
    const int height = wide ? height_when_wide : room_height;
    Draw(item.hDC, room.left + (room_width - width) / 2, room.top + (room_height - height) / 2, width,
         height);
  }

 private:
  void Draw(HDC dc, LONG left, LONG top, int width, int height) const {
    const Image fitting = ScaledTo(image_, width, height);
    const OwnedBitmap bitmap = BitmapOf(fitting);
    const MemoryDc memory;
    const Selected selected(memory.get(), bitmap.get());
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(dc, left, top, width, height, memory.get(), 0, 0, fitting.width, fitting.height, blend);
  }
  void SyncContent() override {
    if (picture_.file() == file_) return;
    file_ = picture_.file();
    image_ = file_.empty() ? Image() : Load();
    InvalidateRect(window(), nullptr, TRUE);
  }
  [[nodiscard]] Image Load() const {
    try {
      return LoadPicture(ToWide(owner().NativePath(file_)), fonts().Scaled(kSharpSize));
    } catch (const base::RuntimeError&) {  // a path that this system cannot have
      return {};
    }
  }
  void ReadContent(forms::ControlReading& reading) const override {
    reading.picture = image_.empty() ? std::string() : file_;
  }

  forms::Picture& picture_;
  Image image_;
  std::string file_;
};

}  // namespace

std::unique_ptr<ControlBinding> Bind(forms::Picture& picture, HWND parent, BindingOwner& owner) {
  return std::make_unique<PictureBinding>(picture, parent, owner);
}

}  // namespace kestro::adapters::win32
