#include "station/web/web_connection.h"

#include <algorithm>
#include <asio/buffer.hpp>
#include <asio/ip/address_v4.hpp>
#include <cassert>
#include <utility>

#include "station/web/web_files.h"

namespace pallomir::station {
namespace {

namespace fs = std::filesystem;
using asio::ip::tcp;

// Bytes; several times what browsers send.
constexpr std::size_t kMaxHead = 16 * 1024;

// A browser sends a head in one go. An idle connection is kept for the next request for as long.
constexpr std::chrono::seconds kHeadTime{10};
constexpr std::chrono::seconds kStallTime{30};

// Services see to it that they take less.
constexpr std::chrono::seconds kWorkTime{90};

constexpr std::size_t kPieceSize = 64 * 1024;

constexpr const char* kPlainText = "text/plain; charset=utf-8";

// Differs whenever the file has changed.
std::string EntityTag(const fs::path& file, std::uintmax_t size) {
  std::error_code ignored;
  return '"' + std::to_string(fs::last_write_time(file, ignored).time_since_epoch().count()) + '-' +
         std::to_string(size) + '"';
}

}  // namespace

WebConnection::WebConnection(tcp::socket socket, const SiteContent& content)
    : socket_(std::move(socket)), content_(content) {
  std::error_code ignored;
  socket_.set_option(tcp::no_delay(true), ignored);
  Progress(kHeadTime);
}

void WebConnection::Progress(std::chrono::seconds timeForNext) {
  lastProgress_ = std::chrono::steady_clock::now();
  deadline_ = lastProgress_ + timeForNext;
}

void WebConnection::Close() {
  if (work_) work_->request_stop();
  work_.reset();
  std::error_code ignored;
  socket_.shutdown(tcp::socket::shutdown_both, ignored);
  socket_.close(ignored);
}

void WebConnection::Read() {
  if (isReading_) return;
  isReading_ = true;
  socket_.async_read_some(asio::buffer(arrived_),
                          [self = shared_from_this()](std::error_code error, std::size_t count) {
                            self->isReading_ = false;
                            if (error) return self->Close();
                            self->input_.append(self->arrived_.data(), count);
                            if (!self->isAnswering_) return self->TakeRequest();
                            if (self->work_ && self->input_.size() <= kMaxHead) self->Read();
                          });
}

void WebConnection::TakeRequest() {
  const std::size_t end = input_.find(kHttpHeadEnd);
  if (std::min(end, input_.size()) > kMaxHead)
    return AnswerShortly("431 Request Header Fields Too Large", false);
  if (end == input_.npos) return Read();
  const auto request = ParseHttpRequest(std::string_view(input_).substr(0, end));
  input_.erase(0, end + kHttpHeadEnd.size());
  isAnswering_ = true;
  if (!request) return AnswerShortly("400 Bad Request", false);
  Answer(*request);
}

void WebConnection::Answer(const HttpRequest& request) {
  // Nobody has anything to send to the site.
  if (request.hasBody) return AnswerShortly("413 Content Too Large", false);
  if (request.method != "GET" && request.method != "HEAD")
    return AnswerShortly("405 Method Not Allowed", false);
  if (const auto text = content_.texts.find(request.path); text != content_.texts.end())
    return AnswerWithText(text->second, request);
  if (const auto service = content_.services.find(request.path); service != content_.services.end())
    return AskService(service->second, request);
  const auto file = FindWebFile(content_.root, request.path);
  if (!file) return AnswerShortly("404 Not Found", request.keepsAlive);
  AnswerWithFile(*file, request);
}

void WebConnection::AnswerWithFile(const fs::path& file, const HttpRequest& request) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  file_ = std::ifstream(file, std::ios::binary);
  if (error || !file_) return AnswerShortly("404 Not Found", request.keepsAlive);
  keepsAlive_ = request.keepsAlive;
  const std::string tag = "ETag: " + EntityTag(file, size) + "\r\n";
  if (tag == "ETag: " + request.ifNoneMatch + "\r\n") {
    output_ = Head("304 Not Modified", tag);
    fileLeft_ = 0;
  } else {
    output_ = Head("200 OK", "Content-Type: " + ContentType(file) +
                                 "\r\nContent-Length: " + std::to_string(size) + "\r\n" + tag);
    fileLeft_ = request.method == "HEAD" ? 0 : size;
  }
  Write();
}

void WebConnection::AnswerWithText(const SiteContent::Text& text, const HttpRequest& request) {
  keepsAlive_ = request.keepsAlive;
  AnswerWith({"200 OK", text.type, text.text, ""}, request.method == "HEAD");
}

bool WebConnection::IsFromHere(const HttpRequest& request) const {
  std::error_code error;
  const auto peer = socket_.remote_endpoint(error);
  if (error || !peer.address().is_loopback()) return false;
  // A page of another host can have its host's name mean this computer, and would then be taken for one of
  // ours.
  const std::string host = request.host.substr(0, request.host.find(':'));
  if (host.empty() || host == "localhost") return true;
  asio::ip::make_address_v4(host, error);
  return !error;
}

void WebConnection::AskService(const SiteContent::Service& service, const HttpRequest& request) {
  assert(content_.workers != nullptr && !work_);
  keepsAlive_ = request.keepsAlive;
  const bool isHead = request.method == "HEAD";
  if (!service.isForEveryone && !IsFromHere(request))
    return AnswerWith(
        {"403 Forbidden", kPlainText, "The station answers this on its own computer only.\n", ""}, isHead);
  work_ = content_.workers->Start(
      [&service, query = request.query](const std::stop_token& stop) { return service.answer(query, stop); },
      [self = shared_from_this(), isHead](const WebAnswer& answer) {
        if (self->IsOpen()) self->AnswerWith(answer, isHead);
      });
  if (!work_)
    return AnswerWith({"503 Service Unavailable", kPlainText, "Too many questions are being answered.\n",
                       "Retry-After: 2\r\n"},
                      isHead);
  Progress(kWorkTime);
  Read();  // tells when the browser leaves
}

void WebConnection::AnswerWith(const WebAnswer& answer, bool isHead) {
  work_.reset();
  fileLeft_ = 0;
  output_ = Head(answer.status, answer.headers + "Content-Type: " + answer.type +
                                    "\r\nContent-Length: " + std::to_string(answer.text.size()) + "\r\n");
  if (!isHead) output_ += answer.text;
  Write();
}

void WebConnection::AnswerShortly(std::string_view status, bool keepsAlive) {
  keepsAlive_ = keepsAlive;
  AnswerWith({std::string(status), kPlainText, std::string(status) + "\n", ""}, false);
}

std::string WebConnection::Head(std::string_view status, const std::string& headers) const {
  return "HTTP/1.1 " + std::string(status) + "\r\n" + content_.headers + headers +
         (keepsAlive_ ? "Connection: keep-alive" : "Connection: close") + std::string(kHttpHeadEnd);
}

void WebConnection::Write() {
  written_ = 0;
  Progress(kStallTime);
  Written();
}

void WebConnection::Written() {
  assert(written_ <= output_.size());
  if (written_ < output_.size()) {
    socket_.async_write_some(asio::buffer(output_) + written_,
                             [self = shared_from_this()](std::error_code error, std::size_t count) {
                               if (error) return self->Close();
                               self->written_ += count;
                               self->Progress(kStallTime);
                               self->Written();
                             });
    return;
  }
  if (fileLeft_ > 0) {
    output_.resize(std::min<std::uintmax_t>(kPieceSize, fileLeft_));
    // The file may have become shorter than the answer has announced.
    if (!file_.read(output_.data(), std::ssize(output_))) return Close();
    fileLeft_ -= output_.size();
    return Write();
  }
  file_.close();
  output_ = std::string();  // gives the memory back
  if (!keepsAlive_) return Close();
  Progress(kHeadTime);
  isAnswering_ = false;
  TakeRequest();
}

}  // namespace pallomir::station
