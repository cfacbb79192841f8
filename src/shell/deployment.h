#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pallomir {

/// Where the outside lies: the values of deployment.ini, which an operator changes once for all users.
struct Deployment {
  std::string websiteServer = "127.0.0.1";  ///< host of the locator, port 2435
  std::string webSite = "127.0.0.1:2480";   ///< host, or host:port, of the map page

  std::string FaqAddress() const { return "http://" + webSite + "/faq"; }
};

/// Reads `Key=Value` lines; "#" and ";" begin comments. Each line that means nothing is described in
/// `complaints`; what is missing keeps its shipped value.
Deployment ParseDeployment(std::string_view text, std::vector<std::string>& complaints);

}  // namespace pallomir
