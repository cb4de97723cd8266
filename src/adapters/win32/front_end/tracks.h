#pragma once

#include <optional>
#include <vector>

namespace kestro::adapters::win32 {

/// What an element needs along one direction, in pixels.
struct Need {
  int first = 0;  // track, and how many it covers
  int span = 1;
  int least = 0;
  int wanted = 0;
  bool grows = false;  // takes room that nobody needs
};

/// The rows or the columns of a container. Tracks that hold nothing need no room,
/// not even the gap beside them.
class Tracks {
 public:
  /// `growing`: the track that takes the room left over; without it the tracks of growing elements do.
  Tracks(const std::vector<Need>& needs, int gap, std::optional<int> growing);

  [[nodiscard]] int least() const { return Sum(&Track::least); }
  [[nodiscard]] int wanted() const { return Sum(&Track::wanted); }
  [[nodiscard]] bool grows() const;

  struct Place {
    int start;
    int length;
  };
  /// Shares out that length (not less than least() is used).
  void Fill(int length);
  /// Where an element stands, after Fill.
  [[nodiscard]] Place PlaceOf(int first, int span) const;

 private:
  struct Track {
    int least = 0;
    int wanted = 0;
    int start = 0;
    int length = 0;
    bool used = false;
    bool grows = false;
  };

  [[nodiscard]] int Sum(int Track::*size) const;
  /// Makes the tracks below a spanning element large enough for it.
  void Widen(const Need& need, int Track::*size, int needed);
  void Shrink(int missing);
  void Stretch(int surplus);
  [[nodiscard]] int Count(const Need& need, bool Track::*property) const;

  std::vector<Track> tracks_;
  int gap_;
};

}  // namespace kestro::adapters::win32
