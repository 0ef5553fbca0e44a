#include "sample/save_file.h"

#include <initializer_list>

#include "sample/bytes.h"

namespace zorvik::sample {
namespace {

constexpr std::size_t kShortText = 20, kLongText = 40;

std::int32_t count(const auto& list) { return static_cast<std::int32_t>(list.size()); }

// Many counts of the file are one more than the number of items.
std::int32_t next(const auto& list) { return count(list) + 1; }

class Writer {
 public:
  Writer& integers(std::initializer_list<std::int32_t> values) {
    for (const std::int32_t value : values) append_int32(bytes_, value);
    return *this;
  }
  Writer& integers(const Integers& values) {
    for (const std::int32_t value : values) append_int32(bytes_, value);
    return *this;
  }
  Writer& reals(const Reals& values) {
    for (const double value : values) append_real(bytes_, value);
    return *this;
  }
  Writer& codes(const std::string& text) {
    for (const char c : text) append_int32(bytes_, static_cast<unsigned char>(c));
    return *this;
  }
  Writer& texts(const Texts& texts, std::size_t width) {
    for (const std::string& text : texts) append_text(bytes_, text, width);
    return *this;
  }
  Writer& characters(const std::string& text) {
    bytes_ += text;
    return *this;
  }
  // The placeholders of an absent field.
  Writer& zero_unless(bool present) { return present ? *this : integers({0}); }
  Writer& blank_unless(bool present) { return present ? *this : characters(" "); }

  std::string bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

void write_rest(Writer& out, const SavedRest& rest) {
  out.integers({rest.offset + next(rest.values), rest.offset + next(rest.pointers),
                rest.offset + next(rest.extended)});
  out.integers({rest.offset, rest.offset, rest.offset});
  if (rest.values.empty()) {
    out.integers({0, 0, 0});
  } else {
    out.reals(rest.values).integers(rest.pointers).integers(rest.extended);
  }
}

void write_events(Writer& out, const SaveRecord& r) {
  out.integers(
      {count(r.events), next(r.constant_values), next(r.constant_extents), next(r.constant_text)});
  out.integers(r.constant_extents).zero_unless(!r.constant_extents.empty());
  out.codes(r.constant_text).blank_unless(!r.constant_text.empty());
  out.reals(r.constant_values).zero_unless(!r.constant_values.empty());
  for (const SavedEvent& event : r.events) out.texts({event.name}, kShortText);
  out.blank_unless(!r.events.empty());
  for (const SavedEvent& event : r.events) out.integers({event.address});
  out.zero_unless(!r.events.empty());
  out.integers({next(r.event_code)});
  out.integers(r.event_code).zero_unless(!r.event_code.empty());
}

void write_lists(Writer& out, const SaveRecord& r) {
  out.integers({count(r.lists), next(r.list_items)});
  if (r.lists.empty()) return;
  for (const SavedList& list : r.lists) out.texts({list.name}, kShortText);
  out.integers(r.list_items);
  for (const SavedList& list : r.lists) out.integers({list.address});
}

}  // namespace

std::string control_structures_bytes(const ControlStructures& c) {
  Writer out;
  out.integers({c.constants, count(c.title), next(c.buffer), count(c.cells)});
  out.characters(c.title);
  out.integers({c.state_values + 1, next(c.pointers), next(c.extended)}).integers(c.cells);
  out.integers(c.buffer).integers(c.pointers).integers(c.extended);
  return out.bytes();
}

std::string save_record_bytes(const SaveRecord& r) {
  Writer out;
  out.integers({r.variables}).reals({r.time, r.largest_step}).integers({r.number});
  out.integers({next(r.values), r.first_extent + count(r.extents), count(r.names), next(r.text),
                r.first_extent});
  out.integers(r.pointers).integers(r.more_pointers).integers(r.extents);
  out.integers(r.lengths).integers(r.value_pointers).reals(r.values);
  out.texts(r.names, kShortText).codes(r.text);
  write_events(out, r);
  write_rest(out, r.rest);
  write_lists(out, r);
  out.reals(r.state);
  out.integers({next(r.output_words), count(r.output_texts)});
  out.integers(r.output_words).zero_unless(!r.output_words.empty());
  out.texts(r.output_texts, kLongText).blank_unless(!r.output_texts.empty());
  out.integers({r.variables, r.last_number});
  return out.bytes();
}

std::string save_file_bytes(const SaveFile& file) {
  std::string bytes = control_structures_bytes(file.controls);
  for (const SaveRecord& record : file.records) bytes += save_record_bytes(record);
  return bytes;
}

}  // namespace zorvik::sample
