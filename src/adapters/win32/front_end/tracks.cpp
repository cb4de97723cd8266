#include "adapters/win32/front_end/tracks.h"

#include <algorithm>

namespace kestro::adapters::win32 {

Tracks::Tracks(const std::vector<Need>& needs, int gap, std::optional<int> growing) : gap_(gap) {
  for (const Need& need : needs) {
    const auto count = static_cast<std::size_t>(need.first) + static_cast<std::size_t>(need.span);
    if (tracks_.size() < count) tracks_.resize(count);
    for (int i = need.first; i < need.first + need.span; ++i) {
      Track& track = tracks_[static_cast<std::size_t>(i)];
      track.used = true;
      if (need.grows && need.span == 1 && !growing) track.grows = true;
    }
    if (need.span > 1) continue;
    Track& track = tracks_[static_cast<std::size_t>(need.first)];
    track.least = std::max(track.least, need.least);
    track.wanted = std::max(track.wanted, need.wanted);
  }
  if (growing) {
    // It may hold nothing but the room left over.
    const auto place = static_cast<std::size_t>(*growing);
    if (tracks_.size() <= place) tracks_.resize(place + 1);
    tracks_[place].grows = true;
  }
  for (const Need& need : needs) {
    if (need.span == 1) continue;
    if (need.grows && Count(need, &Track::grows) == 0 && !growing) {
      tracks_[static_cast<std::size_t>(need.first + need.span - 1)].grows = true;
    }
    Widen(need, &Track::least, need.least);
    Widen(need, &Track::wanted, need.wanted);
  }
  for (Track& track : tracks_) track.wanted = std::max(track.wanted, track.least);
}

int Tracks::Count(const Need& need, bool Track::*property) const {
  const auto first = tracks_.begin() + need.first;
  return static_cast<int>(
      std::count_if(first, first + need.span, [&](const Track& track) { return track.*property; }));
}

void Tracks::Widen(const Need& need, int Track::*size, int needed) {
  int missing = needed - (need.span - 1) * gap_;
  for (int i = need.first; i < need.first + need.span; ++i)
    missing -= tracks_[static_cast<std::size_t>(i)].*size;
  if (missing <= 0) return;
  const int growing = Count(need, &Track::grows);
  int takers = growing > 0 ? growing : need.span;
  for (int i = need.first; i < need.first + need.span; ++i) {
    Track& track = tracks_[static_cast<std::size_t>(i)];
    if (growing > 0 && !track.grows) continue;
    const int share = missing / takers--;
    track.*size += share;
    missing -= share;
  }
}

int Tracks::Sum(int Track::*size) const {
  int sum = 0;
  int used = 0;
  for (const Track& track : tracks_) {
    if (!track.used) continue;
    sum += track.*size;
    ++used;
  }
  return sum + std::max(used - 1, 0) * gap_;
}

bool Tracks::grows() const {
  return std::any_of(tracks_.begin(), tracks_.end(), [](const Track& track) { return track.grows; });
}

void Tracks::Fill(int length) {
  for (Track& track : tracks_) track.length = track.wanted;
  const int surplus = length - wanted();
  if (surplus < 0) Shrink(-surplus);
  if (surplus > 0) Stretch(surplus);
  int start = 0;
  for (Track& track : tracks_) {
    track.start = start;
    start += track.length + (track.used ? gap_ : 0);
  }
}

/// Each track gives of what it could do without, in proportion.
void Tracks::Shrink(int missing) {
  int spare = wanted() - least();
  missing = std::min(missing, spare);
  for (Track& track : tracks_) {
    const int own = track.wanted - track.least;
    if (!track.used || own == 0) continue;
    const int share = static_cast<int>(static_cast<long long>(missing) * own / spare);
    track.length -= share;
    missing -= share;
    spare -= own;
  }
}

void Tracks::Stretch(int surplus) {
  auto takers = std::count_if(tracks_.begin(), tracks_.end(), [](const Track& track) { return track.grows; });
  for (Track& track : tracks_) {
    if (!track.grows) continue;
    const int share = surplus / static_cast<int>(takers--);
    track.length += share;
    surplus -= share;
  }
}

Tracks::Place Tracks::PlaceOf(int first, int span) const {
  const Track& start = tracks_[static_cast<std::size_t>(first)];
  const Track& last = tracks_[static_cast<std::size_t>(first + span - 1)];
  return {start.start, last.start + last.length - start.start};
}

}  // namespace kestro::adapters::win32
