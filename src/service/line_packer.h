// Words packed into lines: a word goes on the current line while the line's next free column plus
// the word's length stays below 80; so no line holds more than 78 characters.
#ifndef ZORVIK_SERVICE_LINE_PACKER_H_
#define ZORVIK_SERVICE_LINE_PACKER_H_

namespace zorvik {

class LinePacker {
 public:
  enum class Place { kFirst, kSameLine, kNewLine };

  // Says where the next word, of `length` characters, goes: as the first one, after a blank on the
  // same line, or on a new line.
  Place place(int length) {
    if (empty_) {
      empty_ = false;
      column_ = length;
      return Place::kFirst;
    }
    const int next_free = column_ + 2;
    if (next_free + length < kEndColumn) {
      column_ += 1 + length;
      return Place::kSameLine;
    }
    column_ = length;
    return Place::kNewLine;
  }

 private:
  static constexpr int kEndColumn = 80;
  bool empty_ = true;
  int column_ = 0;  // of the last character of the current line
};

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_LINE_PACKER_H_
