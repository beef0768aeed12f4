// A list of a few items, which takes no memory of its own.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

namespace Processing::Morvane::checked {

template <class Item, size_t most>
class few {
 public:
  Item* begin() { return items_.data(); }
  Item* end() { return items_.data() + count_; }
  const Item* begin() const { return items_.data(); }
  const Item* end() const { return items_.data() + count_; }
  size_t size() const { return count_; }
  bool is_full() const { return count_ == most; }
  const Item& operator[](const size_t i) const { return items_[i]; }
  bool contains(const Item& item) const { return std::find(begin(), end(), item) != end(); }

  // While it is not full.
  void add(const Item& item) { items_[count_++] = item; }
  template <class Wanted>
  void keep_if(const Wanted wanted) {
    count_ = static_cast<size_t>(std::remove_if(begin(), end(), [&](const Item& i) { return !wanted(i); }) - begin());
  }

 private:
  std::array<Item, most> items_{};
  size_t count_ = 0;
};

}  // namespace Processing::Morvane::checked
