#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "jet/bytes.h"
#include "jet/page.h"

namespace kestro::jet {

using PageBytes = std::array<std::uint8_t, kPageSize>;

/// A page in the cache. Belongs to the Pager.
struct Frame {
  PageNumber page = 0;
  std::uint32_t pins = 0;      // PageRefs that keep it in memory
  std::uint64_t saved_in = 0;  // the savepoint that last kept this page's earlier content
  bool dirty = false;          // differs from the file
  bool mapped = false;         // the pager finds it under its number
  bool referenced = false;     // used since the last search for a page to give up
  alignas(8) PageBytes bytes{};
};

/// Keeps a page in memory and reads it. After a rollback the content is the restored one (of a page that
/// does not exist any more: undefined but harmless).
// NOLINTNEXTLINE(cppcoreguidelines-special-member-functions): one assignment copies and moves
class PageRef {
 public:
  PageRef() = default;
  explicit PageRef(Frame& frame) : frame_(&frame) { ++frame.pins; }
  PageRef(const PageRef& other) : frame_(other.frame_) {
    if (frame_ != nullptr) ++frame_->pins;
  }
  PageRef(PageRef&& other) noexcept : frame_(std::exchange(other.frame_, nullptr)) {}
  PageRef& operator=(PageRef other) noexcept {
    std::swap(frame_, other.frame_);
    return *this;
  }
  ~PageRef() {
    if (frame_ != nullptr) --frame_->pins;
  }

  explicit operator bool() const { return frame_ != nullptr; }
  [[nodiscard]] PageNumber number() const { return frame_->page; }
  [[nodiscard]] ByteSpan bytes() const { return frame_->bytes; }
  [[nodiscard]] bool Is(PageType type) const { return Load16(bytes(), 0) == PageMark(type); }

 protected:
  Frame* frame_ = nullptr;
};

/// The same for a page that is being changed; comes from Pager::Edit only.
class PageEdit : public PageRef {
 public:
  PageEdit() = default;
  explicit PageEdit(Frame& frame) : PageRef(frame) {}
  [[nodiscard]] MutableBytes edit() const { return frame_->bytes; }
};

}  // namespace kestro::jet
