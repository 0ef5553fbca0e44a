// The current line of a text being scanned: reading, listing, and handing out its characters.
//
// One line for the whole run. The program text has 80 significant columns a line; service commands
// that read other texts set `width`. With unit 0 nothing is read: the caller has filled the line
// himself.
#ifndef ZORVIK_DRIVER_SOURCE_LINE_H_
#define ZORVIK_DRIVER_SOURCE_LINE_H_

#include <cstdint>
#include <string_view>

namespace zorvik {

constexpr int kLineCapacity = 200;
constexpr int kProgramColumns = 80;
constexpr int kMaxSourceLines = 99999;

constexpr int kEndOfLine = 10;
constexpr int kEndOfText = -1;

struct SourceLine {
  char text[kLineCapacity];    // columns 1 .. 200; beyond `length` the rest is blank
  int length;                  // without trailing blanks
  int position;                // column of the next character to hand out, from 1
  bool wants_line;             // the next character request first reads a new line
  int number;                  // lines read in the current pass
  int list_to;                 // unit on which each line read is listed; 0: none
  int width;                   // significant columns of a record
  int failure;                 // I/O status of a failed read of a text other than the program's
  std::string_view watched;    // how the lines begin that are counted; empty: none are
  std::int64_t watched_lines;  // of these so far
};
extern SourceLine source_line;

// Start state: nothing read, program text width, no listing.
void reset_source_line();

// Makes `text` (at most 200 characters) the current line, to be scanned with unit 0.
void set_source_text(std::string_view text);

// Reads the next line; returns its length or kEndOfText (also for unit 0). A failed read of the
// program gives "%fat- Read error. File <zrvdat>" on the console and ends the run, as does line
// 100000 while listing; of another text it gives kEndOfText with `failure` set, from then on.
int read_source_line(int unit);

// Hands out the next character: 0 with `character` set, kEndOfLine once a line, or kEndOfText.
inline int next_source_char(int unit, char& character) {
  if (source_line.wants_line) {
    if (read_source_line(unit) == kEndOfText) return kEndOfText;
    source_line.position = 1;
    source_line.wants_line = false;
  }
  if (source_line.position <= source_line.length) {
    character = source_line.text[source_line.position++ - 1];
    return 0;
  }
  source_line.wants_line = true;
  return kEndOfLine;
}

// Sets the next character to be `column` of the current line.
inline void go_back_to(int column) {
  source_line.position = column;
  source_line.wants_line = false;
}

// Positions the program text so that reading goes on at `column` of line `line` (the lines from
// there on are listed when listing is on). Its failures: "%fat- I/O error. File <zrvdat>" with the
// I/O status, and
// "%dbg- Premature End_of_File. u16pxy"; both end the run.
void u16pxy(int unit, int line, int column);

// The same with the listing of the line itself suppressed: goes back to text already listed.
void return_to(int unit, int line, int column);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_SOURCE_LINE_H_
