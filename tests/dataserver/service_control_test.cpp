#include "dataserver/service_control.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "dataserver/open_result.h"
#include "fakes/fake_programs.h"
#include "fakes/room_ports.h"
#include "fakes/temporary_folder.h"

namespace pallomir {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ServiceControlTest : public testing::Test, protected fakes::RoomPorts {
 protected:
  ServiceControlTest() {
    std::filesystem::create_directory(host_);
    fakes::WriteFile(host_ / "ServiceName.log", "old");
    fakes::WriteFile(host_ / "ServiceName.InstallLog", "two\nlines");
  }

  fakes::TemporaryFolder folder_;
  std::filesystem::path host_ = folder_.Path() / "ServiceName";
  fakes::FakeProgramStarter programs_;
  ServiceControl control_{programs_, loop_, questions_, trace_, folder_.Path()};
};

TEST_F(ServiceControlTest, EachCommandRunsTheHostAndShowsItsTranscript) {
  const std::tuple<ServiceCommand, std::vector<std::string>, const char*, const char*> cases[] = {
      {ServiceCommand::kInstall,
       {"-i"},
       "Are you sure you want to install the Data Server on this computer?\r\n\r\nCAUTION: If you have "
       "Pallomir "
       "installed on multiple computers,\r\nmake sure that you have the Data Server installed on only ONE "
       "computer.",
       "Data Server installation finished... check transcript below to see if it was successful\r\n\r\n"
       "The Data Server will start the next time this computer is rebooted\r\n\r\n"
       "You can start the Data Server now by clicking on \"Start\" in the menu\r\n\r\n"},
      {ServiceCommand::kStart, {"-r", "Pallomir_Service"}, "", "Data Server started\r\n\r\n"},
      {ServiceCommand::kStop, {"-k", "Pallomir_Service"}, "", "Data Server stopped.\r\n\r\n"},
      {ServiceCommand::kUninstall,
       {"-u"},
       "Are you sure you want to uninstall the Data Server on this computer?",
       "Data Server uninstalled:\r\n\r\n"},
  };
  for (const auto& [command, switches, question, message] : cases) {
    SCOPED_TRACE(message);
    control_.Run(command);
    if (*question) {
      EXPECT_EQ(box_.shown.back().text, question);
      box_.AnswerIt({true, ""});
    }
    EXPECT_EQ(programs_.started.back().program, host_ / "ServiceName");
    EXPECT_EQ(programs_.started.back().arguments, switches);
    EXPECT_EQ(fakes::ReadFile(host_ / "ServiceName.log"), "");
    // Two looks find it running, the third one does not.
    loop_.Advance(250);
    EXPECT_TRUE(control_.IsBusy());
    programs_.End(3);
    loop_.Advance(100);
    EXPECT_EQ(box_.shown.back().text, message + std::string("Count = 3\r\nhProcess = 4242\r\nExitCode = 3\r\n"
                                                            "\r\ntwo\nlines"));
    box_.AnswerIt();
  }
}

TEST_F(ServiceControlTest, CancelRunsNothing) {
  const std::pair<ServiceCommand, const char*> cases[] = {
      {ServiceCommand::kInstall, "Data Server installation canceled."},
      {ServiceCommand::kUninstall, "Data Server uninstallation canceled."}};
  for (const auto& [command, message] : cases) {
    control_.Run(command);
    box_.AnswerIt({false, ""});
    EXPECT_EQ(box_.shown.back().text, message);
    EXPECT_FALSE(control_.IsBusy());
    box_.AnswerIt();
  }
  EXPECT_THAT(programs_.started, IsEmpty());
}

TEST_F(ServiceControlTest, OneCommandAtATime) {
  std::vector<bool> busy;
  control_.busyChanged = [&] { busy.push_back(control_.IsBusy()); };
  control_.Run(ServiceCommand::kStart);
  control_.Run(ServiceCommand::kStop);
  EXPECT_THAT(programs_.started, SizeIs(1));
  EXPECT_EQ(control_.Note(), "The Data Server is being started");
  programs_.End();
  loop_.Advance(100);
  EXPECT_EQ(control_.Note(), "");
  EXPECT_TRUE(busy.front() && !busy.back());
}

TEST_F(ServiceControlTest, AMissingHostIsSaidWithoutABox) {
  programs_.error = ENOENT;
  std::filesystem::remove_all(host_);
  control_.Run(ServiceCommand::kStart);
  loop_.Advance(1000);
  EXPECT_THAT(box_.shown, IsEmpty());
  EXPECT_FALSE(control_.IsBusy());
  EXPECT_EQ(control_.Note(),
            "The service host of the Data Server can't be started: No such file or directory");
  control_.Run(ServiceCommand::kInstall);
  EXPECT_TRUE(control_.IsBusy()) << "while it asks";
  EXPECT_EQ(control_.Note(), "") << "that was the command before";
}

TEST_F(ServiceControlTest, ClosingEndsTheWaitWithoutABox) {
  control_.Run(ServiceCommand::kStart);
  loop_.Advance(150);
  control_.Close();
  programs_.End();
  loop_.Advance(1000);
  EXPECT_THAT(box_.shown, IsEmpty());
  control_.Run(ServiceCommand::kStop);
  EXPECT_THAT(programs_.started, SizeIs(1));
}

TEST(OpenResult, TellsWhyAProgramDidNotStart) {
  const std::pair<int, const char*> cases[] = {
      {ENOENT, "The specified file was not found."},
      {ENOTDIR, "The specified path was not found."},
      {EACCES, "The operating system denied access to the specified file."},
      {ENOEXEC, "The .exe file is invalid (non-Win32\u00AE .exe or error in .exe image)."},
      {ENOMEM, "There was not enough memory to complete the operation."},
      {ETXTBSY, "A sharing violation occurred."},
      {EAGAIN, "The operating system is out of memory or resources."},
      {EPERM, "An undefined error occurred."},
  };
  for (const auto& [error, message] : cases) EXPECT_EQ(OpenErrorMessage(OpenResultOf(error)), message);
}

}  // namespace
}  // namespace pallomir
