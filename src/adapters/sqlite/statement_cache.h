#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include <sqlite3.h>

namespace kestro::adapters {

struct StatementFinalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPointer = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

/// Prepared statements of one handle by their text. A statement is lent to one user at a time; whoever
/// asks for the same text meanwhile gets a statement of its own.
class StatementCache {
 private:
  using Statements = std::unordered_map<std::string, StatementPointer, TextHash, std::equal_to<>>;

 public:
  /// Idle statements kept; beyond that a returned one is given up.
  static constexpr std::size_t kCapacity = 64;

  /// A statement in use; comes back to the cache reset and without values. Must not outlive the cache.
  class Lease {
   public:
    Lease() = default;
    Lease(Lease&& other) noexcept = default;
    Lease& operator=(Lease&& other) noexcept {
      GiveBack();
      cache_ = other.cache_;
      node_ = std::move(other.node_);
      return *this;
    }
    ~Lease() { GiveBack(); }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    [[nodiscard]] sqlite3_stmt* get() const { return node_.mapped().get(); }
    [[nodiscard]] const std::string& text() const { return node_.key(); }
    [[nodiscard]] bool empty() const { return node_.empty(); }
    void GiveBack();

   private:
    friend class StatementCache;
    Lease(StatementCache& cache, Statements::node_type node) : cache_(&cache), node_(std::move(node)) {}

    StatementCache* cache_ = nullptr;
    Statements::node_type node_;
  };

  /// The handle must outlive the cache.
  explicit StatementCache(sqlite3* database) : database_(database) {}

  /// A statement of that text, prepared now unless an idle one is there. Raises when the text is not
  /// exactly one statement that the engine understands.
  [[nodiscard]] Lease Take(std::string_view text);
  [[nodiscard]] std::size_t idle_count() const { return idle_.size(); }

 private:
  [[nodiscard]] StatementPointer Prepare(std::string_view text) const;

  sqlite3* database_;
  Statements idle_;
};

}  // namespace kestro::adapters
