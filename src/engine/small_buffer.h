#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace engine {

// A run of characters or bytes that stays on the stack while it is short, so comparing two names
// allocates nothing.
template <typename T, int InlineCapacity>
class SmallBuffer {
  public:
    SmallBuffer() = default;
    SmallBuffer(const SmallBuffer&) = delete;
    SmallBuffer& operator=(const SmallBuffer&) = delete;

    T* data() { return heap_.empty() ? inline_.data() : heap_.data(); }
    const T* data() const { return heap_.empty() ? inline_.data() : heap_.data(); }
    int capacity() const { return heap_.empty() ? InlineCapacity : int(heap_.size()); }
    int length() const { return length_; }
    std::basic_string_view<T> view() const { return {data(), size_t(length_)}; }

    // Room for at least `count` elements; the contents are not kept.
    void reserve(int count) {
        if (count > capacity())
            heap_.assign(size_t(count), T{});
    }
    void setLength(int count) { length_ = count; }

  private:
    std::array<T, InlineCapacity> inline_;  // not cleared: written before it is read
    std::vector<T> heap_;
    int length_ = 0;
};

}  // namespace engine
