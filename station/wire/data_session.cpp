#include "station/wire/data_session.h"

#include <asio/buffer.hpp>
#include <cassert>
#include <numeric>
#include <vector>

#include "station/wire/write_plan.h"

namespace pallomir::station {
namespace {

using asio::ip::tcp;

// A request is one small write. Whoever takes longer is not a client, or is one without units to ask for.
constexpr std::chrono::seconds kRequestTime{30};

// A client that takes nothing for this long has gone without hanging up.
constexpr std::chrono::seconds kStallTime{300};

// Some three packets. The send buffer holds several such writes, and the system calls a socket writable when
// a third of its buffer is free; so a write is taken whole and ends where it was planned to.
constexpr std::size_t kWriteSize = 32 * 1024;
constexpr int kSendBufferSize = 256 * 1024;

}  // namespace

DataSession::DataSession(tcp::socket socket, PositionSource& source, RateLimitedLog& log)
    : socket_(std::move(socket)), source_(source), log_(log) {
  std::error_code ignored;
  client_ = socket_.remote_endpoint(ignored).address();
  socket_.non_blocking(true, ignored);
  socket_.set_option(tcp::no_delay(true), ignored);
  socket_.set_option(tcp::socket::send_buffer_size(kSendBufferSize), ignored);
  socket_.set_option(tcp::socket::keep_alive(true), ignored);
  SetDeadline(kRequestTime);
}

void DataSession::SetDeadline(std::chrono::seconds fromNow) {
  deadline_ = std::chrono::steady_clock::now() + fromNow;
}

void DataSession::Start() { Read(); }

void DataSession::Close() {
  std::error_code ignored;
  socket_.close(ignored);
}

DataSession::Use DataSession::UseAt(Millis now) const {
  if (!answer_) return Use::kSilent;
  if (answer_->Until() >= now) return Use::kLive;
  return isWriting_ ? Use::kPast : Use::kServed;
}

void DataSession::Read() {
  socket_.async_read_some(asio::buffer(input_),
                          [self = shared_from_this()](std::error_code error, std::size_t count) {
                            if (error) return self->Close();
                            self->TakeInput({self->input_.data(), count});
                            if (self->IsOpen()) self->Read();
                          });
}

void DataSession::TakeInput(std::string_view input) {
  if (answer_) return;  // a client sends nothing more; reading goes on to notice that it leaves
  request_ += input;
  const std::size_t end = request_.find(kDataRequestEnd);
  if (end == std::string::npos && request_.size() < kMaxDataRequestSize) return;
  const auto request = end == std::string::npos
                           ? std::nullopt
                           : ParseDataRequest(request_.substr(0, end + kDataRequestEnd.size()));
  if (!request) {
    log_("base server: closed a connection with a malformed request of " + std::to_string(request_.size()) +
         " bytes");
    return Close();
  }
  answer_.emplace(source_, *request);
  request_ = std::string();  // gives the memory back
  SetDeadline(kStallTime);
  WriteWhenReady();
}

void DataSession::Tick() {
  const bool isIdle = answer_ && !isWriting_;
  if (!isIdle && std::chrono::steady_clock::now() > deadline_) return Close();
  if (!isIdle) return;
  answer_->LookForNew();
  SetDeadline(kStallTime);
  WriteWhenReady();
}

void DataSession::WriteWhenReady() {
  assert(answer_);
  isWriting_ = !waiting_.empty() || answer_->HasMore();
  if (!isWriting_) return;
  socket_.async_wait(tcp::socket::wait_write, [self = shared_from_this()](std::error_code error) {
    if (!error && self->IsOpen()) self->Write();
  });
}

// One write at a time, so that the clients take turns.
void DataSession::Write() {
  FillUp();
  const std::vector<std::size_t> sizes(packetSizes_.begin(), packetSizes_.end());
  const std::size_t count = PlanWrite(sizes, writtenOfFirst_, !answer_->HasMore(), kWriteSize);
  std::error_code error;
  const std::size_t written = socket_.write_some(asio::buffer(waiting_.data(), count), error);
  if (error && error != asio::error::would_block) return Close();
  if (written > 0) SetDeadline(kStallTime);
  DropWritten(written);
  WriteWhenReady();
}

void DataSession::FillUp() {
  while (waiting_.size() <= kWriteSize && answer_->HasMore()) {
    const Bytes packet = answer_->NextPacket();
    if (packet.empty()) return;
    Append(waiting_, packet);
    packetSizes_.push_back(packet.size());
  }
}

void DataSession::DropWritten(std::size_t count) {
  assert(count <= waiting_.size());
  waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(count));
  writtenOfFirst_ += count;
  while (!packetSizes_.empty() && writtenOfFirst_ >= packetSizes_.front()) {
    writtenOfFirst_ -= packetSizes_.front();
    packetSizes_.pop_front();
  }
  assert(std::accumulate(packetSizes_.begin(), packetSizes_.end(), std::size_t{0}) ==
         waiting_.size() + writtenOfFirst_);
}

}  // namespace pallomir::station
