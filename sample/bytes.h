// Little-endian numbers and fixed-width texts, appended to the bytes of a file.
#ifndef ZORVIK_SAMPLE_BYTES_H_
#define ZORVIK_SAMPLE_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvik::sample {

constexpr double kUndefinedMarker = 8.9e307;

void append_int32(std::string& bytes, std::int32_t value);
void append_real(std::string& bytes, double value);
void append_text(std::string& bytes, std::string_view text, std::size_t width);  // cut or padded

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_BYTES_H_
