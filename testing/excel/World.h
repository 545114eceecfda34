#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "src/host/Application.h"
#include "src/host/Subscription.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class EventSource;

// What the objects share: the program that they stand for, and which of them exist. Books and sheets are one object
// each for as long as somebody holds it, so that identities can be compared.
class World : public std::enable_shared_from_this<World> {
 public:
  explicit World(host::Application program);
  ~World();

  const host::Application& program() const noexcept { return program_; }
  EventSource& events() noexcept { return *events_; }

  // Nothing for Nothing.
  Variant Of(const host::Workbook& book);
  Variant Of(const host::Worksheet& sheet);
  Variant Of(const host::Range& range);
  Variant Of(const host::Window& window);
  Variant Of(const host::Name& name);

  // What a style of a book was last defined as; of one that was not defined here, nothing but its name.
  host::StyleDefinition& StyleOf(const host::Workbook& book, const std::string& name);

  // Told by the objects themselves.
  void CountObject(int change) noexcept { objects_ += change; }
  void ForgetBook(std::uint64_t key) noexcept { books_.erase(key); }
  void ForgetSheet(std::uint64_t key) noexcept { sheets_.erase(key); }
  int objects() const noexcept { return objects_; }

 private:
  host::Application program_;
  std::unique_ptr<EventSource> events_;
  std::map<std::uint64_t, Object*> books_;
  std::map<std::uint64_t, Object*> sheets_;
  std::map<std::pair<std::uint64_t, std::string>, host::StyleDefinition> styles_;  // by book and folded name
  int objects_ = 0;
};

// The port's handles behind arguments; TypeMismatch for other things.
host::Workbook BookBehind(IDispatch* object);
host::Worksheet SheetBehind(IDispatch* object);
host::Range RangeBehind(IDispatch* object);

// Every object of a list, for For Each and by number.
Variant Enumerator(std::vector<Variant> items);

}  // namespace tolvane::testing::excel
