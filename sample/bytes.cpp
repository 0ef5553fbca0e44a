#include "sample/bytes.h"

#include <cstring>

namespace zorvik::sample {

void append_int32(std::string& bytes, std::int32_t value) {
  char raw[sizeof value];
  std::memcpy(raw, &value, sizeof value);
  bytes.append(raw, sizeof raw);
}

void append_real(std::string& bytes, double value) {
  char raw[sizeof value];
  std::memcpy(raw, &value, sizeof value);
  bytes.append(raw, sizeof raw);
}

void append_text(std::string& bytes, std::string_view text, std::size_t width) {
  std::string field(text);
  field.resize(width, ' ');
  bytes += field;
}

}  // namespace zorvik::sample
