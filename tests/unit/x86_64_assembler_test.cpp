// Each instruction against the bytes of the system's assembler.
#include "native/x86_64_assembler.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>

#include "support/run_directory.h"

namespace zorvik::native {
namespace {

constexpr Register kRax = Register::kRax, kRcx = Register::kRcx, kR8 = Register::kR8,
                   kR9 = Register::kR9, kR12 = Register::kR12;
constexpr Xmm kX1{1}, kX13{13};
constexpr Memory kNear{Register::kRbx, -4660}, kElement{Register::kRbx, 74565, true},
    kAtRcx{kRcx, 0};

void lead(Byte* end, int distance) { Assembler::land(end, end + distance); }

struct Row {
  const char* text;
  void (*write)(Assembler& a);
};
constexpr Row kRows[] = {
    {"mov rcx, [rbx - 4660]", [](Assembler& a) { a.mov(kRcx, kNear); }},
    {"{load} mov rax, r8", [](Assembler& a) { a.mov(kRax, kR8); }},
    {"mov [rbx - 4660], r9", [](Assembler& a) { a.mov(kNear, kR9); }},
    {"movabs r12, 0x123456789abcdef0", [](Assembler& a) { a.mov(kR12, 0x123456789abcdef0); }},
    {"movabs rax, 1311768467463790320", [](Assembler& a) { a.mov(kRax, 0x123456789abcdef0); }},
    {"mov eax, -2", [](Assembler& a) { a.mov32(kRax, -2); }},
    {"{load} add rax, rcx", [](Assembler& a) { a.add(kRax, kRcx); }},
    {"{load} add r8, r9", [](Assembler& a) { a.add(kR8, kR9); }},
    {"imul rcx, rax, 74565", [](Assembler& a) { a.imul(kRcx, kRax, 74565); }},
    {"dec rax", [](Assembler& a) { a.dec(kRax); }},
    {"dec r8", [](Assembler& a) { a.dec(kR8); }},
    {"dec qword ptr [rbx - 4660]", [](Assembler& a) { a.dec(kNear); }},
    {"test rcx, rcx", [](Assembler& a) { a.test(kRcx, kRcx); }},
    {"cmp [rbx - 4660], r12", [](Assembler& a) { a.cmp(kNear, kR12); }},
    {"cmp [rbx + 8*rax + 74565], r12", [](Assembler& a) { a.cmp(kElement, kR12); }},
    {"cmp rcx, rax", [](Assembler& a) { a.cmp(kRcx, kRax); }},
    {"cmp rax, 74565", [](Assembler& a) { a.cmp_rax(74565); }},
    {"cmp dword ptr [rbx - 4660], 5", [](Assembler& a) { a.cmp32(kNear, 5); }},
    {"cmp eax, 1", [](Assembler& a) { a.cmp32(kRax, 1); }},
    {"movsd xmm13, [rbx - 4660]", [](Assembler& a) { a.movsd(kX13, kNear); }},
    {"movsd xmm1, [rbx + 8*rax + 74565]", [](Assembler& a) { a.movsd(kX1, kElement); }},
    {"{disp32} movsd [rcx + 0], xmm13", [](Assembler& a) { a.movsd(kAtRcx, kX13); }},
    {"movsd [rbx + 8*rax + 74565], xmm1", [](Assembler& a) { a.movsd(kElement, kX1); }},
    {"movapd xmm1, xmm13", [](Assembler& a) { a.movapd(kX1, kX13); }},
    {"addsd xmm13, xmm1", [](Assembler& a) { a.addsd(kX13, kX1); }},
    {"subsd xmm1, [rbx - 4660]", [](Assembler& a) { a.subsd(kX1, kNear); }},
    {"mulsd xmm13, xmm13", [](Assembler& a) { a.mulsd(kX13, kX13); }},
    {"divsd xmm1, xmm1", [](Assembler& a) { a.divsd(kX1, kX1); }},
    {"sqrtsd xmm1, xmm13", [](Assembler& a) { a.sqrtsd(kX1, kX13); }},
    {"andpd xmm13, [rbx - 4660]", [](Assembler& a) { a.andpd(kX13, kNear); }},
    {"orpd xmm1, xmm13", [](Assembler& a) { a.orpd(kX1, kX13); }},
    {"xorpd xmm13, xmm13", [](Assembler& a) { a.xorpd(kX13, kX13); }},
    {"comisd xmm13, [rbx - 4660]", [](Assembler& a) { a.comisd(kX13, kNear); }},
    {"ucomisd xmm1, xmm13", [](Assembler& a) { a.ucomisd(kX1, kX13); }},
    {"cmpeqsd xmm1, xmm13", [](Assembler& a) { a.cmpsd(kX1, kX13, Predicate::kEqual); }},
    {"cmpltsd xmm13, xmm1", [](Assembler& a) { a.cmpsd(kX13, kX1, Predicate::kLess); }},
    {"cmplesd xmm1, xmm1", [](Assembler& a) { a.cmpsd(kX1, kX1, Predicate::kLessOrEqual); }},
    {"cmpneqsd xmm1, [rbx - 4660]",
     [](Assembler& a) { a.cmpsd(kX1, kNear, Predicate::kNotEqual); }},
    {"cvttsd2si rax, xmm13", [](Assembler& a) { a.cvttsd2si(kRax, kX13); }},
    {"cvtsi2sd xmm13, r8", [](Assembler& a) { a.cvtsi2sd(kX13, kR8); }},
    {"cvtsi2sd xmm1, qword ptr [rbx - 4660]", [](Assembler& a) { a.cvtsi2sd(kX1, kNear); }},
    {"push r12", [](Assembler& a) { a.push(kR12); }},
    {"pop rcx", [](Assembler& a) { a.pop(kRcx); }},
    {"ret", [](Assembler& a) { a.ret(); }},
    {"call rax", [](Assembler& a) { a.call(kRax); }},
    {"jmp rcx", [](Assembler& a) { a.jmp(kRcx); }},
    {"{disp32} jmp . + 100", [](Assembler& a) { lead(a.jmp(), 95); }},
    {"{disp32} jb . - 94", [](Assembler& a) { lead(a.jcc(Condition::kBelow), -100); }},
    {"{disp32} jae . + 6", [](Assembler& a) { a.jcc(Condition::kAboveOrEqual); }},
    {"{disp32} je . + 6", [](Assembler& a) { a.jcc(Condition::kEqual); }},
    {"{disp32} jne . + 6", [](Assembler& a) { a.jcc(Condition::kNotEqual); }},
    {"{disp32} jbe . + 6", [](Assembler& a) { a.jcc(Condition::kBelowOrEqual); }},
    {"{disp32} ja . + 6", [](Assembler& a) { a.jcc(Condition::kAbove); }},
    {"{disp32} js . + 6", [](Assembler& a) { a.jcc(Condition::kSign); }},
    {"{disp32} jp . + 6", [](Assembler& a) { a.jcc(Condition::kParity); }},
    {"{disp32} jge . + 6", [](Assembler& a) { a.jcc(Condition::kGreaterOrEqual); }},
};

// Room for one instruction, filled with zeros.
using Slot = std::array<Byte, 32>;

TEST(Assembler, WritesWhatTheSystemsWrites) {
  const support::RunDirectory directory;
  const std::string text = directory.path("rows.s"), object = directory.path("rows.o"),
                    binary = directory.path("rows");
  std::ofstream rows(text);
  rows << ".intel_syntax noprefix\n";
  for (const Row& row : kRows) rows << row.text << "\n.balign 32, 0\n";
  rows.close();
  const std::string command =
      "as -o " + object + ' ' + text + " && objcopy -O binary -j .text " + object + ' ' + binary;
  if (std::system("as --version >/dev/null && objcopy --version >/dev/null") != 0) GTEST_SKIP();
  ASSERT_EQ(std::system(command.c_str()), 0);
  std::ifstream file(binary, std::ios::binary);
  for (const Row& row : kRows) {
    Slot written = {}, expected = {};
    file.read(reinterpret_cast<char*>(expected.data()), sizeof expected);
    Assembler assembler{written.data()};
    row.write(assembler);
    EXPECT_EQ(written, expected) << row.text;
  }
}

}  // namespace
}  // namespace zorvik::native
