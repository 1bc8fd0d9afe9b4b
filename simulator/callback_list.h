// The callbacks of one kind that a client has registered on one connection.
//
// Adding and removing wait for nobody: a callback that is being called when it is removed runs on,
// and none is begun afterwards.
#pragma once

#include <algorithm>
#include <mutex>
#include <vector>

namespace mixdecks::simulator {

/// Any thread may call.
template <class Callback>
class CallbackList {
 public:
  /// False when it is registered already.
  bool Add(Callback* callback) {
    const std::lock_guard lock(mutex_);
    if (Find(callback) != entries_.end()) return false;
    entries_.push_back({callback});
    return true;
  }

  /// False when it is not registered.
  bool Remove(Callback* callback) {
    const std::lock_guard lock(mutex_);
    const auto entry = Find(callback);
    if (entry == entries_.end()) return false;
    entries_.erase(entry);
    return true;
  }

  /// Takes all away; true when there were any.
  bool RemoveAll() {
    const std::lock_guard lock(mutex_);
    const bool any = !entries_.empty();
    entries_.clear();
    return any;
  }

  bool Contains(Callback* callback) const {
    const std::lock_guard lock(mutex_);
    return Find(callback) != entries_.end();
  }

  std::vector<Callback*> All() const {
    const std::lock_guard lock(mutex_);
    std::vector<Callback*> all;
    for (const Entry& entry : entries_)
      all.push_back(entry.callback);
    return all;
  }

  bool Empty() const { return All().empty(); }

  /// Marks a callback, for what is told once. False when it is gone or was marked before.
  bool Mark(Callback* callback) {
    const std::lock_guard lock(mutex_);
    const auto entry = Find(callback);
    if (entry == entries_.end() || entry->marked) return false;
    entry->marked = true;
    return true;
  }

 private:
  struct Entry {
    Callback* callback;
    bool marked = false;
  };

  auto Find(Callback* callback) { return std::ranges::find(entries_, callback, &Entry::callback); }
  auto Find(Callback* callback) const {
    return std::ranges::find(entries_, callback, &Entry::callback);
  }

  mutable std::mutex mutex_;
  std::vector<Entry> entries_;
};

}  // namespace mixdecks::simulator
