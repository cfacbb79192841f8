#pragma once

#include "platform/beeper.h"

namespace pallomir {

class QtBeeper : public Beeper {
 public:
  void Beep() override;
};

}  // namespace pallomir
