#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "station/station_testing.h"
#include "station/wire/locator_messages.h"

extern char** environ;

namespace pallomir::station {
namespace {

/// The program itself, its standard output in a pipe.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), STATION_PROGRAM);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    EXPECT_EQ(::posix_spawn(&process_, STATION_PROGRAM, &actions, nullptr, pointers.data(), environ), 0);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    output_ = ends[0];
  }
  ~Program() {
    if (process_ > 0) End(SIGKILL);
    ::close(output_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  std::string Line() {
    std::string line;
    for (char c = 0; ::read(output_, &c, 1) == 1 && c != '\n';) line += c;
    return line;
  }

  // Its exit code; -1 where a signal ended it.
  int End(int signal) {
    if (signal != 0) ::kill(process_, signal);
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t process_ = -1;
  int output_ = -1;
};

TEST(Program, ServesUntilItIsTold) {
  using asio::ip::tcp, asio::ip::udp;
  TemporaryFolder folder;
  folder.Write("00000000000A/1", std::string(AsText(Bytes{})));
  const std::vector<std::string> arguments = {"--address", "127.0.72.4",
                                              "--data",    folder.Path(),
                                              "--config",  folder.Write("station.ini", "Demo=on\n")};
  Program station(arguments);
  EXPECT_TRUE(station.Line().starts_with("pallomir-station ready"));

  const auto address = asio::ip::make_address("127.0.72.4");
  asio::io_context context;
  udp::socket socket(context, udp::endpoint(address, 0));
  for (const char* unit : {"000000000001", "00000000000A"}) {
    socket.send_to(asio::buffer(LocatorRequest({unit})), udp::endpoint(address, 2435));
    std::array<char, 100> reply;
    EXPECT_EQ(socket.receive(asio::buffer(reply)), 18u) << unit;
  }
  TestClient probe({address, 18799});
  TestClient data({address, 18800});
  data.Send("000000000001000000000002~2020-01-01 00:00:00~2020-01-01 03:00:00~~");
  std::string stream = data.Receive();
  EXPECT_FALSE(TakePackets(stream).empty());

  Program second(arguments);
  EXPECT_EQ(second.End(0), 3) << "its ports are taken";
  EXPECT_EQ(station.End(SIGTERM), 0);
}

}  // namespace
}  // namespace pallomir::station
