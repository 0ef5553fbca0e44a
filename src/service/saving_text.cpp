// TO_TEXT walks from the file to a writer of text, FROM_TEXT from a reader of text to the file.
// What a field looks like in the text (comment, shape, minus) stands in the same row as its layout.
#include "service/saving_text.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/text.h"
#include "driver/units.h"
#include "service/save_file.h"
#include "service/stop_command.h"
#include "service/text_reader.h"
#include "service/text_writer.h"

namespace zorvik {
namespace {

constexpr std::string_view kToTextConsequence =
    "      Utility can not execute command \"TO_TEXT SAVING\". Function SCMD2";
constexpr TextForm kForm = {"<savtxt>", "<vnxsav>",
                            "   Utility can not execute command FROM_TEXT SAVING Function SCMD2",
                            false};
constexpr std::string_view kBlankItem = "[ ]";  // stands in for absent texts
constexpr std::int32_t kWrittenI2 = 1;          // last integer of a record: made from text

bool is_text(SaveItem item) {
  return item == SaveItem::kTitleChar || item == SaveItem::kCharCode ||
         item == SaveItem::kShortText || item == SaveItem::kLongText;
}

// ---- TO_TEXT

[[noreturn]] void stop_to_text(std::string_view what, int io_status = kNoIoStatus) {
  stop_command(what, kToTextConsequence, io_status);
}

[[noreturn]] void stop_during(std::string_view what, std::string_view name,
                              int io_status = kNoIoStatus) {
  stop_to_text(message("%fat- ", what,
                       " error detected during \"TO_TEXT SAVING\" operation. "
                       "File ",
                       name),
               io_status);
}

// Writes the fields met on a walk over the save file.
class FieldWriter : public FieldTaker {
 public:
  explicit FieldWriter(TextWriter& text) : text_(text) {}

  bool wants(const SaveField&) const override { return true; }

  void begin(const SaveField& field, const FieldItems& items) override {
    const bool commented =
        !field.comment.empty() && !(items.placeholder && field.comment_needs_items);
    if (commented) text_.line(field.comment);
    if (is_text(items.item)) {
      text_.begin_texts();
      if (items.item == SaveItem::kTitleChar) text_.begin_item();
    } else if (!goes_on_) {
      text_.begin_numbers();
    }
  }

  void take(const SaveField& field, const FieldItems& items, void* slice, int count) override {
    // What the file holds there is ignored: a placeholder is written as 0 or a blank.
    if (items.placeholder) std::fill_n(static_cast<char*>(slice), kPlaceholderBytes, '\0');
    const auto* characters = static_cast<const char*>(slice);
    switch (items.item) {
      case SaveItem::kInteger:
        text_.integers(static_cast<const std::int32_t*>(slice), count);
        break;
      case SaveItem::kReal:
        text_.reals(static_cast<const double*>(slice), count);
        break;
      case SaveItem::kCharCode:
        text_.codes(static_cast<const std::int32_t*>(slice), count);
        break;
      case SaveItem::kTitleChar:
        text_.item_piece(items.placeholder
                             ? std::string_view(" ")
                             : std::string_view(characters, static_cast<std::size_t>(count)));
        break;
      case SaveItem::kShortText:
      case SaveItem::kLongText:
        text_.texts(characters, count, static_cast<int>(bytes_of(items.item)));
        break;
    }
    if (!is_text(items.item) && is_sliced(field, items)) {
      text_.end_numbers();
      text_.begin_numbers();
    }
  }

  void end(const SaveField& field, const FieldItems& items) override {
    goes_on_ = field.shape == TextShape::kGroupGoesOn;
    if (items.item == SaveItem::kTitleChar) text_.end_item();
    if (is_text(items.item)) {
      text_.end_texts();
    } else if (!goes_on_ && !is_sliced(field, items)) {
      text_.end_numbers();
    }
  }

 private:
  static constexpr int kPlaceholderBytes = 4;

  static bool is_sliced(const SaveField& field, const FieldItems& items) {
    return field.shape == TextShape::kSliced && !items.placeholder;
  }

  TextWriter& text_;
  bool goes_on_ = false;  // the field before shares its number group with this one
};

// Reads a part of the save file and writes it as text.
void write_save_part(SavePart part, File& save, SaveCounts& counts, TextWriter& text) {
  FieldWriter writer(text);
  switch (walk_part(save, part, counts, writer)) {
    case PartStatus::kOk:
      return;
    case PartStatus::kReadError:
      stop_to_text("%err- Read error. File <vnxsav>", save.io_status());
    case PartStatus::kEnd:
    case PartStatus::kCut:
      stop_to_text("%err- Premature End_of_File detected during reading from <vnxsav>");
  }
}

// Refuses when the save file has no record `number` or is damaged.
// All records are counted, also those behind the wanted one: a damaged file is refused as a whole.
void check_save_file(File& save, SaveCounts& counts, double number) {
  if (scan_save_part(save, SavePart::kControlStructures, counts) != ScanStatus::kOk) {
    stop_to_text("%fat- Control structures in <vnxsav> are invalid");
  }
  std::int64_t records = 0;
  if (scan_records(save, counts, records) != ScanStatus::kEnd) stop_during("I/O", "<vnxsav>");
  if (records == 0) {
    stop_to_text("%fat- File <vnxsav> has not valid records except control structures");
  }
  // Compared as a real: the number may be larger than any count.
  if (number > static_cast<double>(records)) {
    stop_command(message("%fat- Number of records in <vnxsav> NR = ", records),
                 "      2nd argument of SCMD2 > NR");
  }
}

void close_after_to_text(File& file, std::string_view name) {
  if (const int status = file.close(); status != 0) stop_during("Close", name, status);
}

// ---- FROM_TEXT

// Reads the items of fields from the text.
class TextSource : public FieldSource {
 public:
  explicit TextSource(TextReader& text) : text_(text) {}

  void begin(const SaveField&, const FieldItems& items) override {
    if (is_text(items.item)) text_.marker(kTextBegin);
    if (items.item == SaveItem::kTitleChar) read_character_line(items);
  }

  ReadStatus read(const SaveField& field, const FieldItems& items, void* slice,
                  int count) override {
    const bool minus = field.minus_in_text && items.item == field.item;  // not for a placeholder
    const Sign sign = minus ? Sign::kPlusOrMinus : Sign::kPlus;
    switch (items.item) {
      case SaveItem::kInteger:
        for (int k = 0; k < count; ++k) static_cast<std::int32_t*>(slice)[k] = text_.integer(sign);
        break;
      case SaveItem::kReal:
        for (int k = 0; k < count; ++k) static_cast<double*>(slice)[k] = text_.real(sign);
        break;
      case SaveItem::kCharCode:
        read_codes(static_cast<std::int32_t*>(slice), count);
        break;
      case SaveItem::kTitleChar:
        std::copy_n(characters_.data(), count, static_cast<char*>(slice));
        break;
      case SaveItem::kShortText:
      case SaveItem::kLongText:
        read_texts(static_cast<char*>(slice), count, bytes_of(items.item));
        break;
    }
    return ReadStatus::kOk;
  }

  void end(const SaveField&, const FieldItems& items) override {
    if (is_text(items.item)) text_.marker(kTextEnd);
  }

 private:
  // The one line of a title, or of the blank that stands in for absent texts.
  void read_character_line(const FieldItems& items) {
    const auto line = text_.whole_line(items.placeholder ? kTextColumns : kTitleColumns);
    const bool good = items.placeholder ? line == kBlankItem
                                        : static_cast<std::int64_t>(line.size()) == items.count + 2;
    if (!good) text_.stop_on_line();
    characters_ = line.substr(1, line.size() - 2);
  }

  void read_texts(char* items, int count, std::int64_t bytes) {
    const auto width = static_cast<std::size_t>(bytes);
    for (int k = 0; k < count; ++k, items += bytes) copy_padded(items, width, text_.text_item());
  }

  static_assert(kSliceItems % kCodesPerLine == 0, "a slice of codes ends with its line");
  void read_codes(std::int32_t* codes, int count) {
    for (int left = count; left > 0; left -= kCodesPerLine) {
      const auto in_line = static_cast<std::size_t>(std::min(left, kCodesPerLine));
      const std::string_view line = text_.whole_line(kTextColumns);
      if (line.size() < kShortestItemLine) text_.stop_on_line();
      for (std::size_t k = 1; k <= in_line; ++k) {  // a line that ends before goes on with blanks
        *codes++ = k < line.size() ? static_cast<unsigned char>(line[k]) : ' ';
      }
    }
  }

  TextReader& text_;
  std::string_view characters_;  // of the line read last
};

// Writes the fields met on a walk over the text to the save file.
class GroupTaker : public FieldTaker {
 public:
  GroupTaker(GroupWriter& output, const SaveCounts& counts) : output_(output), counts_(counts) {}

  bool wants(const SaveField&) const override { return true; }

  void begin(const SaveField& field, const FieldItems&) override {
    if (!field.comment.empty()) output_.end_group();  // the one before
  }

  void take(const SaveField& field, const FieldItems& items, void* slice, int count) override {
    if (field.keeps == SaveCount::kNvarAgain) finish_record(static_cast<std::int32_t*>(slice));
    output_.write(slice, static_cast<std::size_t>(count * bytes_of(items.item)));
  }

 private:
  // The last group's first integer has to be the record's first one; its second is always 1.
  void finish_record(std::int32_t* last_group) {
    if (counts_[SaveCount::kNvarAgain] != counts_[SaveCount::kNvar]) {
      output_.stop(message("%fat- File <savtxt>. Invalid value ", counts_[SaveCount::kNvar]));
    }
    last_group[1] = kWrittenI2;
  }

  GroupWriter& output_;
  const SaveCounts& counts_;
};

// What is wrong with the text ends the run, so that a part that returns is whole.
void read_save_part(TextReader& text, SavePart part, SaveCounts& counts, GroupWriter& output) {
  TextSource source(text);
  GroupTaker taker(output, counts);
  walk_part(source, part, counts, taker);
  output.end_group();
}

void close_after_from_text(File& file, std::string_view name) {
  if (const int status = file.close(); status != 0) {
    stop_command(message("%fat- Close error. File ", name, '.'), kForm.consequence, status,
                 source_line.number);
  }
}

}  // namespace

void saving_to_text(double number) {
  File& save = open_save_file();
  SaveCounts counts;
  check_save_file(save, counts, number);
  if (const int status = save.rewind(); status != 0) stop_during("Rewind", "<vnxsav>", status);
  open_file(kTextUnit, "TXS", {}, Use::kCreate);
  TextWriter text(file_on(kTextUnit), "<savtxt>", kToTextConsequence);
  write_save_part(SavePart::kControlStructures, save, counts, text);
  if (!skip_records(save, counts, static_cast<std::int64_t>(number) - 1)) {
    stop_during("I/O", "<vnxsav>");
  }
  write_save_part(SavePart::kRecord, save, counts, text);
  text.finish();
  close_after_to_text(save, "<vnxsav>");
  close_after_to_text(file_on(kTextUnit), "<savtxt>");
}

void saving_from_text() {
  open_file(kTextUnit, "TXS");
  open_file(kSaveUnit, "SAN");
  File& save = file_on(kSaveUnit);
  GroupWriter output(save, kForm);
  TextReader text(kTextUnit, kForm, output);
  SaveCounts counts;
  read_save_part(text, SavePart::kControlStructures, counts, output);
  read_save_part(text, SavePart::kRecord, counts, output);
  if (text.more_follows()) output.stop("%fat- File <savtxt>. Extra information detected");
  close_after_from_text(save, "<vnxsav>");
  close_after_from_text(file_on(kTextUnit), "<savtxt>");
}

}  // namespace zorvik
