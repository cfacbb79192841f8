#pragma once

#include "platform/program_starter.h"

namespace pallomir {

class DetachedStarter : public ProgramStarter {
 public:
  ProgramStart Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                     const std::filesystem::path& workingFolder) override;
  bool OpenPage(const std::string& address) override;
};

}  // namespace pallomir
