// The calls under way: where each goes on when it returns, and the GOTOs that it has counted.
#ifndef ZORVIK_EXEC_VALUES_CALL_STACK_H_
#define ZORVIK_EXEC_VALUES_CALL_STACK_H_

namespace zorvik {

constexpr int kMaxCalls = 100;
constexpr int kMaxJumps = 20000;  // GOTOs of one call, or of the block with one record

struct CallStack {
  struct Call {
    int return_position, caller;
    int jumps;            // GOTOs counted in the called procedure
  } call[kMaxCalls + 1];  // call[0] is MAIN's
  int depth;
};
extern CallStack call_stack;

// Notes a call by the running procedure. Whoever calls has seen that the stack is not full.
void push_call(int return_position);

// Makes the caller the running procedure again; returns where it goes on.
int pop_call();

// Whether an OUT of the running procedure to that one is its BEGIN.
bool is_call_of_block(int procedure);

// Whether an OUTPUT's own key TURN_ON lets it run.
bool is_turned_on(int output);

// The position of a procedure's first statement.
int first_statement(int procedure);

inline int& jump_count() { return call_stack.call[call_stack.depth].jumps; }

// Counts a GOTO; false when there were too many already.
inline bool count_jump() {
  if (jump_count() == kMaxJumps) return false;
  ++jump_count();
  return true;
}

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_CALL_STACK_H_
