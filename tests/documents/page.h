// The source of a manual page, line by line, as the checks of the pages read it.
#ifndef ZORVIK_TESTS_DOCUMENTS_PAGE_H_
#define ZORVIK_TESTS_DOCUMENTS_PAGE_H_

#include <string>
#include <string_view>
#include <vector>

namespace zorvik::documents {

constexpr char kArgument = '\1';  // what stands for a text in slanted letters

// A file's content; ends the program with status 2 when it cannot be read.
std::string content_of(const std::string& path);

std::vector<std::string> lines_of(const std::string& path);

// The lines of the section or subsection `heading`, up to the next heading.
std::vector<std::string> section_of(const std::vector<std::string>& page, std::string_view heading);

// The text that a line shows: its escapes replaced, slanted pieces by kArgument.
std::string shown(std::string_view source);

// Complaints go to standard error; the program's exit status follows from their number.
void complain(std::string_view what, std::string_view about);
int exit_status();

}  // namespace zorvik::documents

#endif  // ZORVIK_TESTS_DOCUMENTS_PAGE_H_
