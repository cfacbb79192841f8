#include "servicehost/unit_file.h"

namespace pallomir::servicehost {

std::string UnitWord(std::string_view word) {
  std::string quoted = "\"";
  for (const char c : word) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '%') quoted += '%';
    quoted += c;
  }
  return quoted + '"';
}

std::string UnitText(const std::vector<std::string>& command) {
  std::string words;
  for (const std::string& word : command) words += (words.empty() ? "" : " ") + UnitWord(word);
  // The colon leaves dollar signs alone. A station that gets wrong options (exit code 2) gets them the next
  // time too; a port that is taken may be free in a moment.
  return "[Unit]\n"
         "Description=Pallomir Data Server\n"
         "StartLimitIntervalSec=300\n"
         "StartLimitBurst=10\n"
         "\n"
         "[Service]\n"
         "ExecStart=:" +
         words +
         "\n"
         "WorkingDirectory=~\n"
         "Restart=on-failure\n"
         "RestartSec=2\n"
         "RestartPreventExitStatus=2\n"
         "TimeoutStopSec=10\n"
         "\n"
         "[Install]\n"
         "WantedBy=default.target\n";
}

}  // namespace pallomir::servicehost
