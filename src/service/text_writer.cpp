#include "service/text_writer.h"

#include <cmath>
#include <cstring>

#include "driver/number_format.h"
#include "driver/text.h"
#include "service/stop_command.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

constexpr double kSmallestWritten = 2.3e-302;  // what is smaller is written as zero

}  // namespace

TextWriter::TextWriter(File& file, std::string_view name, std::string_view consequence)
    : file_(file), name_(name), consequence_(consequence) {}

void TextWriter::stop_on_failed_write(int status) {
  file_.close();
  stop_command(message("%err- Write error. File ", name_), consequence_, status);
}

void TextWriter::flush_buffer() {
  const int status = file_.write(buffer_.get(), used_);
  used_ = 0;
  if (status != 0) stop_on_failed_write(status);
}

void TextWriter::make_room() {
  if (used_ >= kBufferBytes) flush_buffer();
}

void TextWriter::put(char c) {
  make_room();
  buffer_[used_++] = c;
}

void TextWriter::put_all(std::string_view text) {
  for (const char c : text) put(c);
}

void TextWriter::line(std::string_view text) {
  put_all(text);
  put('\n');
}

void TextWriter::begin_numbers() { packer_ = {}; }

inline void TextWriter::number(std::string_view text) {
  make_room();
  const auto place = packer_.place(static_cast<int>(text.size()));
  if (place != LinePacker::Place::kFirst) {
    buffer_[used_++] = place == LinePacker::Place::kSameLine ? ' ' : '\n';
  }
  std::memcpy(buffer_.get() + used_, text.data(), text.size());
  used_ += text.size();
}

void TextWriter::integers(const std::int32_t* values, int count) {
  for (int k = 0; k < count; ++k) number(format_integer(values[k]));
}

void TextWriter::reals(const double* values, int count) {
  for (int k = 0; k < count; ++k) {
    if (values[k] == kUndefined) {
      number("UNDEF");
    } else {
      number(format_real(std::fabs(values[k]) < kSmallestWritten ? 0.0 : values[k]));
    }
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
  if (codes_on_line_ > 0) end_item();
  codes_on_line_ = 0;
  line(kTextEnd);
}

void TextWriter::finish() {
  flush_buffer();
  if (const int status = file_.flush(); status != 0) stop_on_failed_write(status);
}

}  // namespace zorvik
