// Element and attribute names of a document, kept once each.

#include "xml/names.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>

#include "text/unicode.h"
#include "xml/kept_text.h"

namespace ondrel::platform {

namespace {

constexpr std::size_t kFirstSlots = 64;

// A new number for each run: nobody can prepare a document whose names all fall into one slot.
std::uint64_t Seed() {
  static const std::uint64_t seed = [] {
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device();
  }();
  return seed;
}

std::uint64_t Mix(std::uint64_t left, std::uint64_t right) {
  __extension__ using Product = unsigned __int128;
  const Product product = Product{left} * right;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t HashOf(std::string_view text) {
  constexpr std::uint64_t kOddBits = 0x9E3779B97F4A7C15;
  std::uint64_t hash = Seed() ^ text.size();
  while (!text.empty()) {
    std::uint64_t word = 0;
    const std::size_t taken = std::min(sizeof word, text.size());
    std::memcpy(&word, text.data(), taken);
    hash = Mix(hash ^ word, kOddBits ^ Seed());
    text.remove_prefix(taken);
  }
  return hash;
}

struct Range {
  char32_t first;
  char32_t last;
};

constexpr Range kNameStart[] = {{'A', 'Z'},       {'_', '_'},       {'a', 'z'},        {0xC0, 0xD6},
                                {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},    {0x37F, 0x1FFF},
                                {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},  {0x3001, 0xD7FF},
                                {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range kNameMore[] = {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t Size>
bool IsIn(const Range (&ranges)[Size], char32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [character](const Range& range) { return character >= range.first && character <= range.last; });
}

}  // namespace

Name*& NameTable::Slot(std::uint64_t hash, std::string_view text) {
  const std::size_t mask = m_slots.size() - 1;
  std::size_t index = hash & mask;
  while (m_slots[index] != nullptr && (m_slots[index]->hash != hash || m_slots[index]->text != text)) {
    index = (index + 1) & mask;
  }
  return m_slots[index];
}

Name* NameTable::Intern(std::string_view text) {
  if (m_last != nullptr) {
    if (Name* const next = m_last->follower; next != nullptr && next->text == text) return m_last = next;
    if (Name* const next = m_last->otherFollower; next != nullptr && next->text == text) return Follow(next);
  }
  if (2 * (m_count + 1) > m_slots.size()) Grow();
  const std::uint64_t hash = HashOf(text);
  Name*& slot = Slot(hash, text);
  if (slot == nullptr) {
    const bool isPlain = text.find(':') == std::string_view::npos;
    slot = m_arena.New<Name>(Name{&m_tree, hash, {m_arena.Copy(text), text.size()}, isPlain});
    ++m_count;
  }
  return Follow(slot);
}

Name* NameTable::InternPlain(std::u16string_view text) {
  if (m_last != nullptr) {
    const auto isWanted = [&](const Name* name) {
      return name != nullptr && name->isPlain && IsKeptAs(name->text, text);
    };
    if (isWanted(m_last->follower)) return m_last = m_last->follower;
    if (isWanted(m_last->otherFollower)) return Follow(m_last->otherFollower);
  }
  return IsXmlName(text) ? Intern(KeptText(text)) : nullptr;
}

// Takes `name` as the one that is asked for now.
Name* NameTable::Follow(Name* name) {
  if (m_last != nullptr) m_last->otherFollower = std::exchange(m_last->follower, name);
  return m_last = name;
}

const Name* NameTable::Find(std::string_view text) const {
  return m_slots.empty() ? nullptr : const_cast<NameTable*>(this)->Slot(HashOf(text), text);
}

void NameTable::Grow() {
  std::vector<Name*> old(std::max(kFirstSlots, 2 * m_slots.size()));
  old.swap(m_slots);
  for (Name* name : old) {
    if (name != nullptr) Slot(name->hash, name->text) = name;
  }
}

bool IsXmlName(std::u16string_view text) {
  const auto isAsciiLetter = [](char16_t unit) { return (unit | 0x20) >= 'a' && (unit | 0x20) <= 'z'; };
  if (!text.empty() && std::all_of(text.begin(), text.end(), isAsciiLetter)) return true;  // as nearly all are
  const char16_t* unit = text.data();
  const char16_t* const end = unit + text.size();
  if (unit == end || !IsIn(kNameStart, TakeUtf16(unit, end))) return false;
  while (unit != end) {
    const char32_t character = TakeUtf16(unit, end);
    if (!IsIn(kNameStart, character) && !IsIn(kNameMore, character)) return false;
  }
  return true;
}

}  // namespace ondrel::platform
