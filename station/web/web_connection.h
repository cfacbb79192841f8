#pragma once

#include <array>
#include <asio/ip/tcp.hpp>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "station/web/http_request.h"
#include "station/web/web_workers.h"

namespace pallomir::station {

/// What the web site answers with.
struct SiteContent {
  struct Text {
    std::string type;  ///< as in a Content-Type header
    std::string text;
  };
  struct Service {
    WebService answer;
    bool isForEveryone = false;  ///< otherwise for this computer alone
  };
  std::filesystem::path root;                              ///< the folder of the files
  std::string headers;                                     ///< for every answer, each with its line end
  std::map<std::string, Text, std::less<>> texts;          ///< by path; they hide files
  std::map<std::string, Service, std::less<>> services{};  ///< by path; they hide files too
  WebWorkers* workers = nullptr;                           ///< where services are at work
};

/// One browser's connection to the web site: takes requests and answers them one after the other. Whatever
/// the browser asks for and however slowly it reads, the connection holds no more than the head of a request
/// and a piece of a file, some 80 kB.
class WebConnection : public std::enable_shared_from_this<WebConnection> {
 public:
  /// `socket` is connected. The content must outlive the connection.
  WebConnection(asio::ip::tcp::socket socket, const SiteContent& content);

  void Start() { Read(); }
  void Close();
  bool IsOpen() const { return socket_.is_open(); }

  /// When the browser will have taken too long: to send the head of a request, or to take a byte.
  std::chrono::steady_clock::time_point Deadline() const { return deadline_; }

  /// When the connection last got anywhere: it was accepted, a request was complete, or bytes of an answer
  /// were taken.
  std::chrono::steady_clock::time_point LastProgress() const { return lastProgress_; }

 private:
  void Read();
  void TakeRequest();
  void Answer(const HttpRequest& request);
  void AnswerWithFile(const std::filesystem::path& file, const HttpRequest& request);
  void AnswerWithText(const SiteContent::Text& text, const HttpRequest& request);
  void AskService(const SiteContent::Service& service, const HttpRequest& request);
  void AnswerWith(const WebAnswer& answer, bool isHead);
  /// Whether whoever asks is on this computer, and no page of another host that is shown here.
  bool IsFromHere(const HttpRequest& request) const;
  /// Answers with the status as a line of text. Then hangs up unless `keepsAlive`.
  void AnswerShortly(std::string_view status, bool keepsAlive);
  std::string Head(std::string_view status, const std::string& headers) const;
  void Write();
  void Written();
  void Progress(std::chrono::seconds timeForNext);

  asio::ip::tcp::socket socket_;
  const SiteContent& content_;
  std::chrono::steady_clock::time_point lastProgress_;
  std::chrono::steady_clock::time_point deadline_;

  std::array<char, 4096> arrived_{};
  std::string input_;  ///< the head of a request as far as it has arrived, and what arrived after it

  std::string output_;  ///< what is being written: the head of an answer, or a piece of its file
  std::size_t written_ = 0;
  std::ifstream file_;
  std::uintmax_t fileLeft_ = 0;  ///< bytes of it that are not in `output_` yet
  bool keepsAlive_ = false;

  bool isReading_ = false;
  bool isAnswering_ = false;              ///< what arrives meanwhile waits in `input_`
  std::optional<std::stop_source> work_;  ///< of the service that is at work on the answer
};

}  // namespace pallomir::station
