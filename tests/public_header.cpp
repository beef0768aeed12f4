// A reader of the public header: namespaces and functions marked MORVANE_API.
#include "public_header.h"

#include <cctype>
#include <fstream>
#include <utility>
#include <vector>

namespace morvane::tests {
namespace {

bool is_part_of_name(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == ':';
}

// Takes the header's text a character at a time; keeps the names since the last brace or semicolon.
class reader {
 public:
  void take(char c) {
    if (is_part_of_name(c)) {
      name_ += c;
      return;
    }
    if (!name_.empty()) names_.push_back(std::exchange(name_, {}));
    if (c == '(' && from_end(3) == "MORVANE_API") {
      declared_function& f = found[enclosing() + from_end(1)];
      f.overloads += 1;
      f.returns_void = from_end(2) == "void";
    } else if (c == '{') {
      scopes_.push_back(from_end(2) == "namespace" ? from_end(1) + "::" : "");
    } else if (c == '}' && !scopes_.empty()) {
      scopes_.pop_back();
    }
    if (c == ';' || c == '{' || c == '}') names_.clear();
  }

  std::map<std::string, declared_function> found;

 private:
  std::string from_end(std::size_t position) const {
    return position <= names_.size() ? names_[names_.size() - position] : "";
  }
  std::string enclosing() const {
    std::string result;
    for (const std::string& scope : scopes_) result += scope;
    return result;
  }

  std::string name_;
  std::vector<std::string> names_;
  std::vector<std::string> scopes_;  // empty for braces that are no namespace's
};

}  // namespace

std::map<std::string, declared_function> declared_functions() {
  std::ifstream header(MORVANE_PUBLIC_HEADER);
  reader r;
  for (std::string line; std::getline(header, line);) {
    if (line.starts_with('#')) continue;
    for (const char c : line.substr(0, line.find("//")) + '\n') r.take(c);
  }
  return r.found;
}

std::set<std::string> declared_functions_of_c() {
  std::ifstream header(MORVANE_C_HEADER);
  std::set<std::string> names;
  for (std::string line; std::getline(header, line);) {
    const std::size_t end = line.find('(');
    if (!line.starts_with("MORVANE_C_API ") || end == std::string::npos) continue;
    const std::size_t begin = line.find_last_of(" *", end) + 1;
    names.insert(line.substr(begin, end - begin));
  }
  return names;
}

}  // namespace morvane::tests
