#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "src/host/Events.h"
#include "src/host/Workbook.h"

namespace tolvane::shell {

class Session;

// An open workbook as a file: what is asked and told before it is saved, printed and closed.
class Book : public host::WorkbookBody, public std::enable_shared_from_this<Book> {
 public:
  virtual Session& session() const = 0;
  virtual bool HasFile() const = 0;
  // Throws when the book cannot be saved there: no file name, a book of that name is open, or no such kind of file.
  virtual void RequireFilePath(const std::string& path) const = 0;
  // Writes the file without asking; it is the book's own from then on.
  virtual void WriteFile(const std::string& path) = 0;
  virtual bool DefinesName(std::string_view name) const = 0;

  // Raises the event that asks before; false when a handler cancelled, or closed the book itself.
  bool MaySave(bool saveAsUI);
  bool MayClose();
  bool MayPrint();

  void Save() final;
  void SaveAs(std::string_view path) final;
  void Close(bool saveChanges) final;

 private:
  bool MayGoOn(const std::function<void(host::ApplicationEvents&, const host::Workbook&, bool& cancel)>& ask);
};

}  // namespace tolvane::shell
