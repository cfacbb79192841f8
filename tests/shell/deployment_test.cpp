#include "shell/deployment.h"

#include <gtest/gtest.h>

namespace pallomir {
namespace {

TEST(Deployment, ReadsItsTwoValuesAndComplainsOfTheRest) {
  std::vector<std::string> complaints;
  const Deployment deployment = ParseDeployment(
      "\xEF\xBB\xBF# comment\r\n WebsiteServer = station.local "
      "\r\n;x\nWebSite=10.0.0.7:8080\nWebSite=evil/path\nOther=1\n"
      "WebsiteServer\n",
      complaints);
  EXPECT_EQ(deployment.websiteServer, "station.local");
  EXPECT_EQ(deployment.webSite, "10.0.0.7:8080");
  EXPECT_EQ(complaints.size(), 4u);
  EXPECT_EQ(ParseDeployment("", complaints).webSite, "127.0.0.1:2480");
}

TEST(Deployment, AWebSiteIsAnOriginAndNothingElse) {
  const std::pair<const char*, const char*> cases[] = {
      {"ATLAS.Zone:80", "atlas.zone"},      {"station.local:0080", "station.local"},
      {"[FE80::1]:8080", "[fe80::1]:8080"}, {"[::1]", "[::1]"},
      {"a:80:80", "127.0.0.1:2480"},        {"a:65536", "127.0.0.1:2480"},
      {"a:-1", "127.0.0.1:2480"},           {"[::1]x", "127.0.0.1:2480"},
      {"user@a", "127.0.0.1:2480"},
  };
  for (const auto& [value, webSite] : cases) {
    std::vector<std::string> complaints;
    const std::string line = std::string("WebSite=") + value;
    EXPECT_EQ(ParseDeployment(line, complaints).webSite, webSite) << value;
    EXPECT_EQ(complaints.size(), webSite == std::string("127.0.0.1:2480") ? 1u : 0u) << value;
  }
  std::vector<std::string> complaints;
  EXPECT_EQ(ParseDeployment("WebsiteServer=A.example:80\nWebsiteServer=::1", complaints).websiteServer,
            "::1");
  EXPECT_EQ(complaints.size(), 1u) << "the locator's port is fixed";
}

}  // namespace
}  // namespace pallomir
