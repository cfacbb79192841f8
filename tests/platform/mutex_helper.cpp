#include <cstdio>
#include <cstring>

#include "platform/qt/lock_file_mutex.h"

// mutex_helper own FOLDER NAME: owns the mutex until it is killed or its input ends; prints "own" or "no".
// mutex_helper ask FOLDER NAME: prints "owned" or "free".
int main(int argc, char** argv) {
  if (argc != 4) return 2;
  pallomir::LockFileMutex mutex(argv[2]);
  if (std::strcmp(argv[1], "ask") == 0) {
    std::puts(mutex.IsOwnedElsewhere(argv[3]) ? "owned" : "free");
    return 0;
  }
  std::puts(mutex.Create(argv[3]) ? "own" : "no");
  std::fflush(stdout);
  std::getchar();
  return 0;
}
