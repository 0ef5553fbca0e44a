// Numbers found by names: a hash table for a table of names that keeps its own rows.
//
// Open addressing over a power of two of slots, of which at most half may be taken. A slot holds
// the number of a row, from 1; the rows' names are asked for through `name_of(number)`. Usable at
// compile time.
#ifndef ZORVIK_DRIVER_NAME_SLOTS_H_
#define ZORVIK_DRIVER_NAME_SLOTS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zorvik {

// FNV-1a.
constexpr std::uint32_t hash_of_name(std::string_view name) {
  std::uint32_t hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
  return hash;
}

template <std::size_t kSlots>
class NameSlots {
 public:
  static_assert((kSlots & (kSlots - 1)) == 0);

  constexpr void reset() { slots_.fill(0); }

  // The number of the row of that name, or 0.
  template <class NameOf>
  constexpr int find(std::string_view name, NameOf name_of) const {
    return slots_[place_of(name, name_of)];
  }

  // The same, to be set to the number of the new row when it is 0.
  template <class NameOf>
  constexpr std::int16_t& slot(std::string_view name, NameOf name_of) {
    return slots_[place_of(name, name_of)];
  }

 private:
  template <class NameOf>
  constexpr std::size_t place_of(std::string_view name, NameOf name_of) const {
    std::size_t k = hash_of_name(name) % kSlots;
    while (slots_[k] != 0 && name_of(slots_[k]) != name) k = (k + 1) % kSlots;
    return k;
  }

  std::array<std::int16_t, kSlots> slots_{};
};

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_NAME_SLOTS_H_
