#pragma once

#include <array>
#include <asio/ip/tcp.hpp>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "station/web/http_request.h"

namespace pallomir::station {

/// What the web site answers with.
struct SiteContent {
  struct Text {
    std::string type;  ///< of its content, as a header says it
    std::string text;
  };
  std::filesystem::path root;                      ///< the folder of its files
  std::string headers;                             ///< of every answer, each with its line end
  std::map<std::string, Text, std::less<>> texts;  ///< by path; they come before files
};

/// One browser's connection to the web site: requests come in, files go out, one after the other. Whatever is
/// asked and however slowly it is taken, it holds no more than the head of a request and a piece of a file.
class WebConnection : public std::enable_shared_from_this<WebConnection> {
 public:
  /// The content must outlive the connection.
  WebConnection(asio::ip::tcp::socket socket, const SiteContent& content);

  void Start() { Read(); }
  void Close();
  bool IsOpen() const { return socket_.is_open(); }

  /// When the other side has taken too long: with the whole head of a request, or to take a byte.
  std::chrono::steady_clock::time_point Deadline() const { return deadline_; }

  /// When something last came of it: it was accepted, its request was whole, a byte of the answer was taken.
  std::chrono::steady_clock::time_point LastProgress() const { return lastProgress_; }

 private:
  void Read();
  void TakeRequest();
  void Answer(const HttpRequest& request);
  void AnswerWithFile(const std::filesystem::path& file, const HttpRequest& request);
  void AnswerWithText(const SiteContent::Text& text, const HttpRequest& request);
  /// Answers in a line of text. Hangs up behind it unless `keepsAlive`.
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
  std::string input_;  ///< the head of a request as far as it has come, and what came behind it

  std::string output_;  ///< the head of an answer, or a piece of its file
  std::size_t written_ = 0;
  std::ifstream file_;
  std::uintmax_t fileLeft_ = 0;  ///< bytes of it that are not in `output_` yet
  bool keepsAlive_ = false;
};

}  // namespace pallomir::station
