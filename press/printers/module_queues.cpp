// The part of the library that reads and changes queues.
#include "press/printers/module.h"
#include "press/printers/module_reason.h"

#include <cups/cups.h>
#include <cups/ppd.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"  // nothing else reads descriptions

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
using Message = std::unique_ptr<ipp_t, void (*)(ipp_t*)>;
using Description = std::unique_ptr<ppd_file_t, void (*)(ppd_file_t*)>;

Message request(ipp_op_t operation, const char* name) {
  char uri[HTTP_MAX_URI];
  httpAssembleURIf(HTTP_URI_CODING_ALL, uri, sizeof uri, "ipp", nullptr, "localhost", 0, "/printers/%s", name);
  Message message(ippNewRequest(operation), ippDelete);
  ippAddString(message.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri);
  ippAddString(message.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  return message;
}

// The attributes of the queue; null when there is none.
Message attributesOf(const char* name) {
  Message question = request(IPP_OP_GET_PRINTER_ATTRIBUTES, name);
  const char* const wanted[] = {"printer-type", "printer-is-temporary", "printer-state-reasons"};
  ippAddStrings(question.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", 3, nullptr, wanted);
  Message answer(cupsDoRequest(CUPS_HTTP_DEFAULT, question.release(), "/"), ippDelete);
  if (cupsLastError() == IPP_STATUS_ERROR_NOT_FOUND) return {nullptr, ippDelete};
  if (!answer || cupsLastError() > IPP_STATUS_OK_CONFLICTING) throw std::runtime_error(Press::lastReason());
  return answer;
}

std::string textsOf(ipp_t* attributes, const char* name) {
  ipp_attribute_t* const attribute = ippFindAttribute(attributes, name, IPP_TAG_KEYWORD);
  std::string texts;
  for (int i = 0; attribute != nullptr && i < ippGetCount(attribute); ++i)
    texts += std::string(texts.empty() ? "" : ",") + ippGetString(attribute, i, nullptr);
  return texts;
}

// The description as the service has it, byte by byte; null when there is none.
std::unique_ptr<std::string> descriptionOf(const char* name) {
  const File file(std::tmpfile(), std::fclose);
  if (!file) throw std::runtime_error("tmpfile");
  const std::string resource = std::string("/printers/") + name + ".ppd";
  const http_status_t status = cupsGetFd(CUPS_HTTP_DEFAULT, resource.c_str(), fileno(file.get()));
  if (status == HTTP_STATUS_NOT_FOUND) return nullptr;
  if (status != HTTP_STATUS_OK) throw std::runtime_error(httpStatus(status));
  auto content = std::make_unique<std::string>();
  if (std::fseek(file.get(), 0, SEEK_SET) != 0) throw std::runtime_error(Press::lastReason());
  char block[1 << 14];
  while (const std::size_t size = std::fread(block, 1, sizeof block, file.get())) content->append(block, size);
  if (std::ferror(file.get()) != 0) throw std::runtime_error(Press::lastReason());
  return content;
}

int read(const char* name, void (*receiver)(void*, const KilnQueue*), void* context) {
  const Message attributes = attributesOf(name);
  if (!attributes) return 1;
  ipp_attribute_t* const type = ippFindAttribute(attributes.get(), "printer-type", IPP_TAG_ENUM);
  const bool isClass = type != nullptr && (ippGetInteger(type, 0) & static_cast<int>(CUPS_PRINTER_CLASS)) != 0;
  ipp_attribute_t* const temporary = ippFindAttribute(attributes.get(), "printer-is-temporary", IPP_TAG_BOOLEAN);
  const std::string reasons = textsOf(attributes.get(), "printer-state-reasons");
  const auto description = isClass ? nullptr : descriptionOf(name);
  const KilnQueue queue = {isClass ? 1 : 0, temporary != nullptr ? ippGetBoolean(temporary, 0) : 0, reasons.c_str(),
                           description ? description->c_str() : nullptr, description ? description->size() : 0};
  receiver(context, &queue);
  return 1;
}

int check(const char* name, void (*fail)(void*, const char*), void* context) {
  const Description description(ppdOpenFile(name), ppdClose);
  if (description) return 1;
  int line = 0;
  const ppd_status_t status = ppdLastError(&line);
  fail(context, (std::string(ppdErrorString(status)) + ", " + std::to_string(line)).c_str());
  return 0;
}

int describe(const char* name, const char* file, void (*fail)(void*, const char*), void* context) {
  Message change = request(IPP_OP_CUPS_ADD_MODIFY_PRINTER, name);
  ippDelete(cupsDoFileRequest(CUPS_HTTP_DEFAULT, change.release(), "/admin/", file));
  if (cupsLastError() <= IPP_STATUS_OK_CONFLICTING) return 1;
  fail(context, Press::lastReason().c_str());
  return 0;
}

// Runs a part of the interface.
template <class Work>
int run(void (*fail)(void*, const char*), void* context, const Work& work) {
  try {
    Press::askForNoPassword();
    return work();
  } catch (const std::exception& problem) {
    fail(context, problem.what());
  }
  return 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int kilnReadQueue(const char* name,
                                                                    void (*receiver)(void*, const KilnQueue*),
                                                                    void (*fail)(void*, const char*), void* context) {
  return run(fail, context, [&] { return read(name, receiver, context); });
}

extern "C" __attribute__((visibility("default"))) int
kilnCheckDescription(const char* file, void (*fail)(void*, const char*), void* context) {
  return run(fail, context, [&] { return check(file, fail, context); });
}

extern "C" __attribute__((visibility("default"))) int
kilnDescribeQueue(const char* name, const char* file, void (*fail)(void*, const char*), void* context) {
  return run(fail, context, [&] { return describe(name, file, fail, context); });
}

static_assert(std::is_same_v<decltype(&kilnReadQueue), KilnReadQueue>);
static_assert(std::is_same_v<decltype(&kilnCheckDescription), KilnCheckDescription>);
static_assert(std::is_same_v<decltype(&kilnDescribeQueue), KilnDescribeQueue>);
