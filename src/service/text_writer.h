// Writer of the text forms: number groups, text groups and comment lines.
//
//   ! Tau                              comment line
//   1.000000000E+00 2.500000000E-01    number group: one blank between numbers, lines of 78 at most
//   0_TEXT_0                           text group: each item whole between brackets
//   [P.CH1(1:12)                             ]
//   1_TEXT_1
#ifndef ZORVIK_SERVICE_TEXT_WRITER_H_
#define ZORVIK_SERVICE_TEXT_WRITER_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/file.h"
#include "service/line_packer.h"

namespace zorvik {

constexpr std::string_view kTextBegin = "0_TEXT_0";
constexpr std::string_view kTextEnd = "1_TEXT_1";
constexpr std::string_view kTauLine = "! Tau";
constexpr int kCodesPerLine = 100;

class TextWriter {
 public:
  // Writes to `file`, named "<restxt>" or "<savtxt>" in "%err- Write error. File ", which a failed
  // write gives together with the command's second line, `consequence`.
  TextWriter(File& file, std::string_view name, std::string_view consequence);

  void line(std::string_view text);

  // One number group: its numbers may come in pieces; without any it is an empty line.
  void begin_numbers();
  void integers(const std::int32_t* values, int count);
  void reals(const double* values, int count);
  void end_numbers();

  // One text group: items of `width` characters, or characters given by their codes (the low byte
  // counts), 100 to a line; both may come in pieces. `item_piece` is for an item longer than that.
  void begin_texts();
  void texts(const char* items, int count, int width);
  void codes(const std::int32_t* codes, int count);
  void begin_item() { put('['); }
  void item_piece(std::string_view piece);
  void end_item() { put_all("]\n"); }
  void end_texts();

  // Hands everything to the system.
  void finish();

 private:
  template <class Put>
  void number(Put put);
  void put(char c);
  void put_all(std::string_view text);
  char* room(std::size_t bytes);
  [[noreturn]] void stop_on_failed_write(int status);

  File& file_;
  const std::string_view name_, consequence_;
  LinePacker packer_;
  int codes_on_line_ = 0;
};

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_TEXT_WRITER_H_
