#pragma once

#include <array>
#include <asio/ip/tcp.hpp>
#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "station/common/log.h"
#include "station/wire/answer.h"

namespace pallomir::station {

/// One client on the data port: takes its request, sends the answer and then new records, until one side
/// hangs up. It holds a few packets at most, however much there is to send and however slowly the client
/// reads.
class DataSession : public std::enable_shared_from_this<DataSession> {
 public:
  /// `socket` is connected. Source and log must outlive the session.
  DataSession(asio::ip::tcp::socket socket, PositionSource& source, RateLimitedLog& log);

  void Start();

  /// To be called about once a second: sends what is new. Hangs up on a client that has not sent its request
  /// within 30 s, or has taken no byte for 300 s.
  void Tick();

  void Close();

  /// What would be lost if a session had to give way to another client, from least to most.
  enum class Use { kSilent, kServed, kPast, kLive };

  /// kSilent: the client has not sent its request. kServed: its window is over at `now` (UTC), and all of it
  /// has been sent. kPast: the window is over, but there is more to send. kLive: records of this moment are
  /// for it.
  Use UseAt(Millis now) const;

  /// The client's address.
  const asio::ip::address& Client() const { return client_; }
  bool IsOpen() const { return socket_.is_open(); }

 private:
  void Read();
  void TakeInput(std::string_view input);
  void WriteWhenReady();
  void Write();
  void FillUp();
  void DropWritten(std::size_t count);
  void SetDeadline(std::chrono::seconds fromNow);

  asio::ip::tcp::socket socket_;
  asio::ip::address client_;
  PositionSource& source_;
  RateLimitedLog& log_;
  std::chrono::steady_clock::time_point deadline_;

  std::array<char, 4096> input_{};
  std::string request_;  ///< as much of it as has arrived
  std::optional<Answer> answer_;

  Bytes waiting_;                        ///< packets to write, the first perhaps without its beginning
  std::deque<std::size_t> packetSizes_;  ///< of those packets, all of the first included
  std::size_t writtenOfFirst_ = 0;
  bool isWriting_ = false;
};

}  // namespace pallomir::station
