#pragma once

namespace pallomir {

class Beeper {
 public:
  virtual ~Beeper() = default;
  /// The system's default beep; returns at once.
  virtual void Beep() = 0;
};

}  // namespace pallomir
