// The process that a question's cost is measured against.

#include <cstdio>

int main() {
  std::puts("nothing asked");
}
