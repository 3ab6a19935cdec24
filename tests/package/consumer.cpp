// Links against the installed library and exercises one call of each foundation piece.
#include <vorn/vorn.h>

#include <cstdio>

int main() {
  void* block = VornMalloc(8);
  VornFree(block);
  VornException error("Parameter is NULL", 5003);
  std::printf("%s %d\n", error.Message(), error.ErrorCode());
  return error.ErrorCode() == 5003 ? 0 : 1;
}
