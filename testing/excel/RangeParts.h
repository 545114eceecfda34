#pragma once

#include "src/host/Range.h"
#include "testing/excel/Object.h"

namespace tolvane::testing::excel {

class FontObject final : public ObjectOf<FontObject> {
 public:
  FontObject(std::shared_ptr<World> world, host::Font font) : ObjectOf(std::move(world)), handle(std::move(font)) {}
  static std::span<const Member> Members();

  const host::Font handle;
};

class InteriorObject final : public ObjectOf<InteriorObject> {
 public:
  InteriorObject(std::shared_ptr<World> world, host::Interior interior)
      : ObjectOf(std::move(world)), handle(std::move(interior)) {}
  static std::span<const Member> Members();

  const host::Interior handle;
};

class BorderObject final : public ObjectOf<BorderObject> {
 public:
  BorderObject(std::shared_ptr<World> world, host::Border border)
      : ObjectOf(std::move(world)), handle(std::move(border)) {}
  static std::span<const Member> Members();

  const host::Border handle;
};

class BordersObject final : public ObjectOf<BordersObject> {
 public:
  BordersObject(std::shared_ptr<World> world, host::Range range)
      : ObjectOf(std::move(world)), handle(std::move(range)) {}
  static std::span<const Member> Members();

  const host::Range handle;
};

class ValidationObject final : public ObjectOf<ValidationObject> {
 public:
  ValidationObject(std::shared_ptr<World> world, host::Validation validation)
      : ObjectOf(std::move(world)), handle(std::move(validation)) {}
  static std::span<const Member> Members();

  host::ValidationRule Rule() const;  // ApplicationDefined where there is none
  template <auto Field>
  static Variant Setting(ValidationObject& validation, const Call& call);

  const host::Validation handle;
};

class HyperlinksObject final : public ObjectOf<HyperlinksObject> {
 public:
  HyperlinksObject(std::shared_ptr<World> world, host::Hyperlinks links)
      : ObjectOf(std::move(world)), handle(std::move(links)) {}
  static std::span<const Member> Members();

  std::vector<Variant> Items() const;

  const host::Hyperlinks handle;
};

}  // namespace tolvane::testing::excel
