// Numbers go straight into the file's buffer, a buffer's worth to a write. Whether a number goes on
// the current line is known when it stands there; the character before it is written last.
#include "service/text_writer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "driver/interruption.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "service/stop_command.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

// What is smaller is written as zero: it lies within six places of the smallest normal number,
// 2.3e-308, and the conversion that reads it back takes nothing below 1e-306.
constexpr double kSmallestWritten = 2.3e-302;

}  // namespace

TextWriter::TextWriter(File& file, std::string_view name, std::string_view consequence)
    : file_(file), name_(name), consequence_(consequence) {}

void TextWriter::stop_on_failed_write(int status) {
  stop_command(message("%err- Write error. File ", name_), consequence_, status);
}

inline char* TextWriter::room(std::size_t bytes) {
  char* const to = file_.room(bytes);
  if (file_.write_failure() != 0) stop_on_failed_write(file_.write_failure());
  return to;
}

void TextWriter::put(char c) {
  *room(1) = c;
  file_.wrote(1);
}

void TextWriter::put_all(std::string_view text) {
  for (const char c : text) put(c);
}

void TextWriter::line(std::string_view text) {
  put_all(text);
  put('\n');
}

void TextWriter::begin_numbers() {
  stop_if_interrupted();
  // A group begins a line of its own, whatever the one before has left free.
  packer_ = {};
}

// Its place is known when its length is: `put` writes it behind the character that goes before it.
template <class Put>
inline void TextWriter::number(Put put) {
  char* const to = room(kMaxNumberWidth + 1);
  const auto length = static_cast<std::size_t>(put(to + 1) - to) - 1;
  const auto place = packer_.place(static_cast<int>(length));
  if (place == LinePacker::Place::kFirst) {
    std::memmove(to, to + 1, length);
    file_.wrote(length);
  } else {
    *to = place == LinePacker::Place::kSameLine ? ' ' : '\n';
    file_.wrote(length + 1);
  }
}

void TextWriter::integers(const std::int32_t* values, int count) {
  for (int k = 0; k < count; ++k) {
    number([=](char* to) { return put_integer(to, values[k]); });
  }
}

void TextWriter::reals(const double* values, int count) {
  for (int k = 0; k < count; ++k) {
    const double value = std::fabs(values[k]) < kSmallestWritten ? 0.0 : values[k];
    number([=](char* to) {
      return value == kUndefined ? std::copy_n("UNDEF", 5, to) : put_real(to, value);
    });
  }
}

void TextWriter::end_numbers() { put('\n'); }

void TextWriter::begin_texts() {
  line(kTextBegin);
  codes_on_line_ = 0;
}

void TextWriter::item_piece(std::string_view piece) { put_all(piece); }

void TextWriter::texts(const char* items, int count, int width) {
  for (int k = 0; k < count; ++k) {
    begin_item();
    item_piece({items + static_cast<std::size_t>(k) * static_cast<std::size_t>(width),
                static_cast<std::size_t>(width)});
    end_item();
  }
}

// A line is closed by the code that no longer fits, or by the group's end.
void TextWriter::codes(const std::int32_t* codes, int count) {
  for (int k = 0; k < count; ++k) {
    if (codes_on_line_ == kCodesPerLine) {
      end_item();
      codes_on_line_ = 0;
    }
    if (codes_on_line_++ == 0) begin_item();
    put(static_cast<char>(static_cast<unsigned char>(codes[k] & 0xFF)));
  }
}

void TextWriter::end_texts() {
  // A full last line is closed here too, not when it became full.
  if (codes_on_line_ > 0) end_item();
  codes_on_line_ = 0;
  line(kTextEnd);
}

void TextWriter::finish() {
  if (const int status = file_.flush(); status != 0) stop_on_failed_write(status);
}

}  // namespace zorvik
