#include <algorithm>

#include "fuzz_input.h"
#include "shell/deployment.h"

// deployment.ini: whatever stands in it, what comes out can't be anything but a host in an address.
//
// Flags: -max_len=256

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pallomir;
  const std::string_view text = AsText({data, size});
  std::vector<std::string> complaints;
  const Deployment deployment = ParseDeployment(text, complaints);
  PALLOMIR_DEMAND(complaints.size() <= static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1);
  for (const std::string& host : {deployment.websiteServer, deployment.webSite}) {
    PALLOMIR_DEMAND(!host.empty() && host.size() <= 255);
    PALLOMIR_DEMAND(host.find_first_not_of("0123456789abcdefghijklmnopqrstuvwxyz.-:[]") == std::string::npos);
  }
  std::vector<std::string> none;
  const Deployment again = ParseDeployment(
      "WebsiteServer=" + deployment.websiteServer + "\r\n WebSite = " + deployment.webSite, none);
  PALLOMIR_DEMAND(none.empty());
  PALLOMIR_DEMAND(again.websiteServer == deployment.websiteServer && again.webSite == deployment.webSite);
  return 0;
}
