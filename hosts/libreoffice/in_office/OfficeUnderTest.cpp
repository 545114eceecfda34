#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <utility>

#include "hosts/libreoffice/CalcWorkbook.h"
#include "hosts/libreoffice/in_office/OfficeCase.h"
#include "src/host/Errors.h"

namespace tolvane::libreoffice {

namespace fs = std::filesystem;

namespace {

fs::path NewFolder() {
  std::string pattern = (fs::temp_directory_path() / "tolvane-office-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("Cannot make a folder " + pattern + ".");
  return pattern;
}

}  // namespace

OfficeUnderTest::OfficeUnderTest(const Reference<css::uno::XComponentContext>& context)
    : context_(context), folder_(NewFolder()), host_(context, desk_, {}) {
  subscription_ = host_.application().Advise(*this);
}

OfficeUnderTest::~OfficeUnderTest() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string OfficeUnderTest::PutFile(std::string_view name, std::string_view bytes) const {
  const std::string path = PathFor(name);
  std::ofstream(path, std::ios::binary) << bytes << std::flush;
  return path;
}

std::vector<std::string> OfficeUnderTest::TakeEvents() {
  return std::exchange(events_, {});
}

Reference<css::frame::XModel> OfficeUnderTest::OpenByHand(std::string_view what, bool readOnly) const {
  const OUString url = what.starts_with('/') ? ToUrl(what) : ToUno(what);
  const Reference<css::frame::XModel> document(css::frame::Desktop::create(context_)->loadComponentFromURL(
                                                   url, "_blank", 0, ToSequence({{"ReadOnly", Any(readOnly)}})),
                                               UNO_QUERY_THROW);
  // The office tells of new documents from its own loop.
  As<css::awt::XToolkitExperimental>(css::awt::Toolkit::create(context_))->processEventsToIdle();
  return document;
}

void OfficeUnderTest::CloseByHand(const Reference<css::frame::XModel>& document) const {
  As<css::util::XCloseable>(document)->close(true);
}

void OfficeUnderTest::StoreByHand(const Reference<css::frame::XModel>& document, std::string_view path,
                                  const char* filter) const {
  As<css::frame::XStorable>(document)->storeAsURL(
      ToUrl(path), ToSequence({{"FilterName", Any(OUString::createFromAscii(filter))}, {"Overwrite", Any(true)}}));
}

Reference<css::frame::XModel> OfficeUnderTest::ModelOf(const host::Workbook& book) const {
  return BodyOf(book)->model();
}

void OfficeUnderTest::WorkbookOpen(const host::Workbook& book) {
  events_.push_back("open " + book.Name());
}

void OfficeUnderTest::WindowActivate(const host::Workbook& book, const host::Window&) {
  events_.push_back("activate " + book.Name());
}

void OfficeUnderTest::SheetChange(const host::Worksheet& sheet, const host::Range& target) {
  events_.push_back("change " + sheet.Name() + "!" + target.Address());
}

::testing::AssertionResult Fails(host::ErrorNumber number, std::string_view part, const std::function<void()>& action) {
  try {
    action();
  } catch (const host::HostError& error) {
    const std::string text = error.what();
    if (error.number() == number && text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "error " << static_cast<int>(error.number()) << ": " << text;
  }
  return ::testing::AssertionFailure() << "no error";
}

}  // namespace tolvane::libreoffice
