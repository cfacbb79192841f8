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

/// One client on the data port: its request comes in, the answer goes out, new reports follow until one side
/// hangs up. It holds a few packets at most, however much there is to send and however slowly they are taken.
class DataSession : public std::enable_shared_from_this<DataSession> {
 public:
  /// Source and log must outlive the session.
  DataSession(asio::ip::tcp::socket socket, PositionSource& source, RateLimitedLog& log);

  void Start();

  /// Sends what is new; hangs up on a client that has not asked, or not taken a byte, for too long.
  void Tick();

  void Close();
  /// How much is lost when a session has to give way to another client, from least to most.
  enum class Use { kSilent, kServed, kPast, kLive };

  /// kSilent: it has not asked yet. kServed: its window was over at `now`, and all of it was sent. kPast: the
  /// window was over, but there is more to send. kLive: what comes now is for it.
  Use UseAt(Millis now) const;

  /// Where the client is.
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
  std::string request_;  ///< as much of it as has come
  std::optional<Answer> answer_;

  Bytes waiting_;                        ///< packets not written, the first perhaps in part
  std::deque<std::size_t> packetSizes_;  ///< theirs, whole
  std::size_t writtenOfFirst_ = 0;
  bool isWriting_ = false;
};

}  // namespace pallomir::station
