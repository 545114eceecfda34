#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tolvane::engine {

// A list whose copies share their elements until one of them is changed; copying costs a counter. Asking for an element
// to change it makes the list the only owner first. The counter is not atomic: a workbook belongs to one thread.
template <class T>
class SharedList {
 public:
  SharedList() = default;
  SharedList(const SharedList& other) noexcept : rep_(other.rep_) {
    if (rep_ != nullptr) ++rep_->owners;
  }
  SharedList(SharedList&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}
  SharedList& operator=(SharedList other) noexcept {
    std::swap(rep_, other.rep_);
    return *this;
  }
  ~SharedList() {
    if (rep_ != nullptr && --rep_->owners == 0) delete rep_;
  }

  std::size_t size() const { return rep_ == nullptr ? 0 : rep_->items.size(); }
  bool empty() const { return size() == 0; }
  std::size_t capacity() const { return rep_ == nullptr ? 0 : rep_->items.capacity(); }
  const T& operator[](std::size_t at) const { return rep_->items[at]; }
  const T* begin() const { return rep_ == nullptr ? nullptr : rep_->items.data(); }
  const T* end() const { return begin() + size(); }

  // The elements, to be changed.
  std::vector<T>& Own() {
    if (rep_ == nullptr) {
      rep_ = new Rep;
    } else if (rep_->owners > 1) {
      Rep* copy = new Rep{1, rep_->items};
      --rep_->owners;
      rep_ = copy;
    }
    return rep_->items;
  }
  void push_back(T item) { Own().push_back(std::move(item)); }

  friend bool operator==(const SharedList& a, const SharedList& b) {
    if (a.rep_ == b.rep_) return true;
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    return a.rep_->items == b.rep_->items;
  }

 private:
  struct Rep {
    std::uint32_t owners = 1;
    std::vector<T> items;
  };
  Rep* rep_ = nullptr;  // null: empty
};

}  // namespace tolvane::engine
