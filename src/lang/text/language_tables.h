// The fixed vocabulary of the language: characters, operators, keywords, built-in functions.
#ifndef ZORVIK_LANG_TEXT_LANGUAGE_TABLES_H_
#define ZORVIK_LANG_TEXT_LANGUAGE_TABLES_H_

#include <array>
#include <string_view>

namespace zorvik {

// Lexeme codes. Codes 1 to 15 are the operator characters in the order of kOperatorCharacters.
enum LexemeCode : int {
  kTimes = 1,
  kLess = 2,
  kGreater = 3,
  kAssign = 4,
  kColon = 5,
  kDivide = 6,
  kPlus = 7,
  kMinus = 8,
  kSemicolon = 9,
  kOpen = 10,
  kClose = 11,
  kComma = 12,
  kAnd = 13,
  kOr = 14,
  kNot = 15,
  kPower = 16,
  kLessEqual = 17,
  kNotEqual = 18,
  kGreaterEqual = 19,
  kEqual = 20,
  kLastOperator = 20,
  kIntegerConstant = 100,
  kRealConstant = 101,
  kCharacterConstant = 102,
  kName = 103,
  kLabel = 104,
  kFirstFunction = 201,
  kFirstKeyword = 301,
};

enum Keyword : int {
  kIf = 301,
  kThen,
  kElse,
  kEndif,
  kGoto,
  kPrint,
  kStop,
  kEnd,
  kOut,
  kOutput,
  kWrite,
  kReturn,
  kBegin,
  kWrite1,
  kDo,
  kEnddo,
};

constexpr bool is_operator(int code) { return code >= 1 && code <= kLastOperator; }
constexpr bool is_keyword(int code) { return code >= kFirstKeyword; }
constexpr bool is_function(int code) { return code >= kFirstFunction && code < kFirstKeyword; }
constexpr bool is_numeric_constant(int code) {
  return code == kIntegerConstant || code == kRealConstant;
}

constexpr int kMaxIdentifierLength = 20;
constexpr int kMaxCharacterConstant = 80;

inline constexpr std::string_view kOperatorCharacters = "*<>=:/+-;(),&|^";

// Text of an operator by its code.
inline constexpr std::array<std::string_view, 21> kOperatorTexts = {
    "",  "*", "<", ">", "=", ":",  "/",  "+",  "-",  ";", "(",
    ")", ",", "&", "|", "^", "**", "<=", "<>", "=>", "=="};

// Keyword k has the code 300 + k.
inline constexpr std::array<std::string_view, 16> kKeywords = {
    "IF",  "THEN",   "ELSE",  "ENDIF",  "GOTO",  "PRINT",  "STOP", "END",
    "OUT", "OUTPUT", "WRITE", "RETURN", "BEGIN", "WRITE1", "DO",   "ENDDO"};

// Signature: the result's kind, then the arguments'. I integer, F real, C character, A array, *
// integer or real (as a result: the type of the argument).
struct Function {
  std::string_view name;
  std::string_view signature;
  int arguments;
};

// Function k has the code 200 + k.
inline constexpr std::array<Function, 32> kFunctions = {{
    {"MINA", "*A", 1},   {"MAXA", "*A", 1},    {"ABS", "**", 1},      {"LOG", "F*", 1},
    {"INT", "I*", 1},    {"FLOAT", "F*", 1},   {"NINT", "I*", 1},     {"SQRT", "F*", 1},
    {"EXP", "F*", 1},    {"SIN", "F*", 1},     {"COS", "F*", 1},      {"TAN", "F*", 1},
    {"ASIN", "F*", 1},   {"ACOS", "F*", 1},    {"ATAN", "F*", 1},     {"SINH", "F*", 1},
    {"COSH", "F*", 1},   {"TANH", "F*", 1},    {"TETA", "F*", 1},     {"RAND", "F*", 1},
    {"MOD", "III", 2},   {"MAX", "***", 2},    {"MIN", "***", 2},     {"RANDG", "F**", 2},
    {"LINA", "A**I", 3}, {"LINS", "F**I*", 4}, {"WS1P1", "FIC*I", 4}, {"WS2P1", "FIC**I", 5},
    {"SCMD2", "ICA", 2}, {"INTEG", "FAA", 2},  {"FOURT", "FIIAA", 4}, {"GINFO", "IIC", 2},
}};

constexpr bool signatures_match_counts() {
  for (const Function& function : kFunctions) {
    if (static_cast<int>(function.signature.size()) != function.arguments + 1) return false;
  }
  return true;
}
static_assert(signatures_match_counts());

// The functions that are named elsewhere in the code.
constexpr int function_number(std::string_view name) {
  for (std::size_t k = 0; k < kFunctions.size(); ++k) {
    if (kFunctions[k].name == name) return static_cast<int>(k) + 1;
  }
  return 0;
}
inline constexpr int kFunctionAbs = function_number("ABS");  // to TETA: one number, no side effect
inline constexpr int kFunctionTeta = function_number("TETA");
inline constexpr int kFunctionFloat = function_number("FLOAT");
inline constexpr int kFunctionSqrt = function_number("SQRT");
inline constexpr int kFunctionMina = function_number("MINA");
inline constexpr int kFunctionMaxa = function_number("MAXA");
inline constexpr int kFunctionLins = function_number("LINS");
inline constexpr int kFunctionWs1p1 = function_number("WS1P1");
inline constexpr int kFunctionWs2p1 = function_number("WS2P1");
inline constexpr int kFunctionMod = function_number("MOD");
inline constexpr int kFunctionMax = function_number("MAX");
inline constexpr int kFunctionMin = function_number("MIN");

constexpr const Function& function_of(int number) {  // 1 .. 32
  return kFunctions[static_cast<std::size_t>(number) - 1];
}

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_LANGUAGE_TABLES_H_
