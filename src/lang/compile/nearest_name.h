// The known name that a mistyped one was probably meant to be.
#ifndef ZORVIK_LANG_COMPILE_NEAREST_NAME_H_
#define ZORVIK_LANG_COMPILE_NEAREST_NAME_H_

#include <string_view>

namespace zorvik {

// The results variable, key or variable of the program that is nearest to `name` (upper case): at
// most two changes away, one for a name of less than eight characters. Empty when none is near and
// for names of one or two characters.
std::string_view nearest_known_name(std::string_view name);

}  // namespace zorvik

#endif  // ZORVIK_LANG_COMPILE_NEAREST_NAME_H_
