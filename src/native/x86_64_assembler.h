// The few instructions that translated statements are made of, as bytes for an x86-64 processor.
//
// A method has the mnemonic of its instruction, and its operands in the order of the processor's
// manual (Intel 64 and IA-32 Architectures Software Developer's Manual, volume 2): the target comes
// first. Whole registers and places in memory have 64 bits, unless the name says 32. The caller
// sees to the room; nothing is written but the bytes of instructions.
#ifndef ZORVIK_NATIVE_X86_64_ASSEMBLER_H_
#define ZORVIK_NATIVE_X86_64_ASSEMBLER_H_

#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace zorvik::native {

using Byte = std::uint8_t;

enum class Register : Byte {
  kRax = 0,
  kRcx = 1,
  kRbx = 3,
  kRdi = 7,
  kR8 = 8,
  kR9 = 9,
  kR10 = 10,
  kR12 = 12
};

// xmm0 .. xmm15, each used for one double.
struct Xmm {
  Byte number;
  bool operator==(const Xmm&) const = default;
};

// [base + displacement], or [base + 8 * rax + displacement].
struct Memory {
  Register base;
  std::int32_t displacement;
  bool is_indexed = false;
};

// A register or a place in memory, where an instruction takes either.
struct Operand {
  Operand(Register r) : number(static_cast<Byte>(r)) {}
  Operand(Xmm x) : number(x.number) {}
  Operand(const Memory& m) : number(static_cast<Byte>(m.base)), is_memory(true), memory(m) {}
  Byte number;  // of the register or of the base
  bool is_memory = false;
  Memory memory = {};
};

enum class Condition : Byte {
  kBelow = 2,
  kAboveOrEqual = 3,
  kEqual = 4,
  kNotEqual = 5,
  kBelowOrEqual = 6,
  kAbove = 7,
  kSign = 8,
  kParity = 10,  // of ucomisd and comisd: an operand is not a number
  kGreaterOrEqual = 13,
};

enum class Predicate : Byte { kEqual = 0, kLess = 1, kLessOrEqual = 2, kNotEqual = 4 };

class Assembler {
 public:
  Byte* next = nullptr;  // where the next instruction goes

  // ---- Whole numbers and addresses ----
  void mov(Register to, const Operand& from) { whole(0x8B, to, from); }
  void mov(const Memory& to, Register from) { whole(0x89, from, to); }
  void mov(Register to, std::uint64_t value) {
    put({0x48 | static_cast<Byte>(to) >> 3, 0xB8 | low(to)});
    put_value(value);
  }
  void mov32(Register to, std::int32_t value) {
    put({0xB8 | low(to)});
    put_value(value);
  }
  void add(Register to, const Operand& from) { whole(0x03, to, from); }
  void imul(Register to, Register from, std::int32_t factor) {
    whole(0x69, to, from);
    put_value(factor);
  }
  void dec(const Operand& place) { encode(0, true, {0xFF}, 1, place); }
  void test(Register a, Register b) { whole(0x85, b, a); }
  void cmp(const Operand& a, Register b) { whole(0x39, b, a); }
  void cmp_rax(std::int32_t value) {
    put({0x48, 0x3D});
    put_value(value);
  }
  void cmp32(const Operand& a, std::int8_t value) {
    encode(0, false, {0x83}, 7, a);
    put_value(value);
  }

  // ---- Doubles ----
  void movsd(Xmm to, const Memory& from) { sse(0xF2, 0x10, to.number, from); }
  void movsd(const Memory& to, Xmm from) { sse(0xF2, 0x11, from.number, to); }
  void movapd(Xmm to, Xmm from) { sse(0x66, 0x28, to.number, from); }
  void addsd(Xmm to, const Operand& from) { sse(0xF2, 0x58, to.number, from); }
  void subsd(Xmm to, const Operand& from) { sse(0xF2, 0x5C, to.number, from); }
  void mulsd(Xmm to, const Operand& from) { sse(0xF2, 0x59, to.number, from); }
  void divsd(Xmm to, const Operand& from) { sse(0xF2, 0x5E, to.number, from); }
  void sqrtsd(Xmm to, const Operand& from) { sse(0xF2, 0x51, to.number, from); }
  void andpd(Xmm to, const Operand& from) { sse(0x66, 0x54, to.number, from); }
  void orpd(Xmm to, const Operand& from) { sse(0x66, 0x56, to.number, from); }
  void xorpd(Xmm to, const Operand& from) { sse(0x66, 0x57, to.number, from); }
  void comisd(Xmm a, const Operand& b) { sse(0x66, 0x2F, a.number, b); }
  void ucomisd(Xmm a, const Operand& b) { sse(0x66, 0x2E, a.number, b); }
  void cmpsd(Xmm to, const Operand& from, Predicate predicate) {
    sse(0xF2, 0xC2, to.number, from);
    put({static_cast<int>(predicate)});
  }
  void cvttsd2si(Register to, const Operand& from) {
    encode(0xF2, true, {0x0F, 0x2C}, static_cast<Byte>(to), from);
  }
  void cvtsi2sd(Xmm to, const Operand& from) { encode(0xF2, true, {0x0F, 0x2A}, to.number, from); }

  // ---- Going on ----
  void push(Register r) { encode_short(0x50, r); }
  void pop(Register r) { encode_short(0x58, r); }
  void ret() { put({0xC3}); }
  void call(Register to) { put({0xFF, 0xD0 | low(to)}); }
  void jmp(Register to) { put({0xFF, 0xE0 | low(to)}); }
  // The distance of these two is set later: see `land`. They give the place behind the instruction.
  Byte* jmp() { return put_distance({0xE9}); }
  Byte* jcc(Condition condition) {
    return put_distance({0x0F, 0x80 | static_cast<Byte>(condition)});
  }
  // Makes such an instruction lead to the target, at most 2 GB away.
  static void land(Byte* behind_jump, const Byte* target) {
    const auto distance = static_cast<std::int32_t>(target - behind_jump);
    std::memcpy(behind_jump - sizeof distance, &distance, sizeof distance);
  }

 private:
  static int low(Register r) { return static_cast<Byte>(r) & 7; }

  void put(std::initializer_list<int> bytes) {
    for (const int byte : bytes) *next++ = static_cast<Byte>(byte);
  }
  template <typename T>
  void put_value(T value) {
    std::memcpy(next, &value, sizeof value);
    next += sizeof value;
  }
  Byte* put_distance(std::initializer_list<int> opcode) {
    put(opcode);
    put_value(std::int32_t{0});
    return next;
  }

  // The REX byte is 0100WRXB: 64 bits wide, and the fourth bits of reg, of the index (never here)
  // and of the base or the second register.
  void encode_short(int opcode, Register r) {
    if (static_cast<Byte>(r) >= 8) put({0x41});
    put({opcode | low(r)});
  }
  void encode(int prefix, bool is_wide, std::initializer_list<int> opcode, int reg,
              const Operand& rm) {
    if (prefix != 0) put({prefix});
    const int rex = (is_wide ? 8 : 0) | (reg >> 3) << 2 | rm.number >> 3;
    if (rex != 0) put({0x40 | rex});
    put(opcode);
    const int registers = (reg & 7) << 3 | (rm.number & 7);
    if (!rm.is_memory) return put({0xC0 | registers});
    if (rm.memory.is_indexed) {
      put({0x84 | (reg & 7) << 3, 0xC0 | (rm.number & 7)});
    } else {
      put({0x80 | registers});
    }
    put_value(rm.memory.displacement);
  }
  void whole(int opcode, Register reg, const Operand& rm) {
    encode(0, true, {opcode}, static_cast<Byte>(reg), rm);
  }
  void sse(int prefix, int opcode, int reg, const Operand& rm) {
    encode(prefix, false, {0x0F, opcode}, reg, rm);
  }
};

}  // namespace zorvik::native

#endif  // ZORVIK_NATIVE_X86_64_ASSEMBLER_H_
