// Plain statements run decoded, and often run ones in machine code: whatever leaves them for the
// general way gives the same values, so only a look at where execution ends shows it.
#include <gtest/gtest.h>

#include <set>

#include "lang/code/code_store.h"
#include "native/native_code.h"
#include "sample/property_file.h"
#include "unit/service_run.h"
#ifdef ZORVIK_NATIVE
#include "native/translator.h"
#endif

namespace zorvik {
namespace {

class PlainStatements : public ServiceRun {};

// The inner loop begins in line 6. The outer one, over when it is looked at, is left in line 33.
constexpr int kInnerLoop = 6, kOuterEnd = 33;
const char* const kProgram = R"(L: X = 0.5; Y = 1.5; N = 3; M = 0; P = 0.0; V(1:3) = 1.0, 2.0, 3.0;
A(1:2,1:3) = 0.0; W(1:4) = 1; DO I = 1, 3; WRITE X*2.0, N, V(2); ENDDO

! all below is plain
DO R = 1, 200;
DO I = 1, 2;
P = X + Y; P = X - Y; P = X*Y; P = X/Y; P = Y - 1.0; P = 1.0 - X; P = 1.0/X;
P = X*Y + X; P = X + X*Y; P = X - X*Y; P = X*Y - X; P = X/(X*Y); P = X*Y/X;
P = X*(X + Y)*(X - Y); P = 2.0*X - 1.0; P = Y/2.0; P = X*Y/(X + Y); P = N*X;
M = N + I; M = N - I; M = N*I; M = N + N*I; M = N*I - N; M = 2*N - 1; M = I;
M = N*(I + N); M = N/2; M = MOD(N,2); M = N**2; P = X**Y; P = Y**N; M = N/I;
P = MAX(X,Y); P = MIN(X,N); M = MAX(N,I); M = MIN(N,2); P = -X; M = +N; M = ^N;
M = X < Y; M = X > Y; M = X =< Y; M = X <> Y; M = X => Y; M = X == Y;
M = N & I; M = N | I; M = (X < Y) & (N > I); P = ABS(X); P = SQRT(Y);
P = ABS(X*Y); P = EXP(X) + SIN(X)*LOG(Y); M = INT(Y); P = FLOAT(N); M = NINT(Y);
P = MAXA(V); P = MINA(V); P = LINS(V,V,3,1.5); P = WS1P1(1,'T',400.0,4);
P = WS2P1(0,'PT',1.0E7,400.0,4); P = X + 1.0; V(I) = X; P = V(I) + V(3);
A(I,3) = X; A(1,I+1) = A(I,3)*2.0; W(N) = I; M = N - N*I; M = N - 1; M = N*2;
IF X < Y [ M = 1; ][ M = 2; ] IF X > Y [ M = 1; ] IF X =< Y [ M = 1; ]
IF M [ M = 0; ] IF X => Y [ M = 1; ] IF X == Y [ M = 1; ] IF X <> Y [ M = 1; ]
IF X*2.0 < Y [ M = 1; ] IF X*2.0 > Y [ M = 1; ] IF X*2.0 =< Y [ M = 1; ]
IF Y => X*2.0 [ M = 1; ] IF Y == X*2.0 [ M = 1; ] IF Y <> X*2.0 [ M = 1; ]
IF Y < X*2.0 [ M = 1; ] IF N > M & X < Y THEN M = 3; ENDIF IF ^M THEN ENDIF
IF Y =< X*2.0 [ M = 1; ]
DO K = 1, N; P = P + K; ENDDO DO K = N, 1, -1; M = M + K; ENDDO
DO K = 2, 1; ENDDO DO K = 1, 3; DO J = 1, 2; A(J,K) = V(K) + J; ENDDO ENDDO
GOTO B;
P = 0.0;
B: IF I > 5 [ GOTO B; ]
OUT T; OUT T;
ENDDO

ENDDO
END
OUTPUT T; M = M + 1; IF M > 5 [ RETURN; ] M = M + 2; END
)";

int line_at(int position) { return -(code_store.word[position] % 100000); }

// The first statement of that line which is decoded.
int decoded_at(int line) {
  for (int position = 1; position <= kCodeCapacity; ++position) {
    if (decoded_program.start[position] > 0 && line_at(position) == line) return position;
  }
  return 0;
}

int decoded_end(int position) {
  Reached reached{position, true};
  while (reached.often) reached = run_decoded(reached.position);
  return line_at(reached.position);
}

TEST_F(PlainStatements, StayDecodedAndTranslated) {
  put("nwsp_dat", sample::sample_property_file_bytes());
  put("zrvdat", kProgram);
  const auto ends_at = [&](auto end) {
    return run([&] {
             run_program();
             ::_exit(end());
           })
        .status;
  };
  EXPECT_EQ(ends_at([] { return decoded_end(decoded_at(kInnerLoop)); }), kOuterEnd);
  // Every op is there: as good as it can be for its operands.
  EXPECT_EQ(ends_at([] {
              std::set<Op> ops;
              for (int k = 0; k < decoded_program.count; ++k) {
                ops.insert(decoded_program.instruction[k].op);
              }
              return static_cast<int>(ops.size());
            }),
            static_cast<int>(Op::kValue) + 1);
#ifdef ZORVIK_NATIVE
  EXPECT_EQ(ends_at([] {
              const native::Byte* const code = native::native_code.code[decoded_at(kInnerLoop)];
              return code == nullptr ? 0 : line_at(native::native_code.enter(code));
            }),
            kOuterEnd);
#endif
}

}  // namespace
}  // namespace zorvik
