#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "src/host/Application.h"
#include "src/host/CommandBars.h"
#include "src/host/Ribbon.h"

namespace tolvane::contract {

// A call of one member with some arguments, for rules that hold for every member. `access` as in the table of members:
// "get", "set" or "call".
template <class HandleType>
struct MemberCall {
  std::string_view member;
  std::string_view access;
  void (*call)(const HandleType& handle);
};

std::span<const MemberCall<host::Range>> RangeMembers();
std::span<const MemberCall<host::Worksheet>> WorksheetMembers();
std::span<const MemberCall<host::Workbook>> WorkbookMembers();
std::span<const MemberCall<host::Name>> NameMembers();
std::span<const MemberCall<host::Names>> NamesMembers();
std::span<const MemberCall<host::Window>> WindowMembers();
std::span<const MemberCall<host::CommandBar>> CommandBarMembers();
std::span<const MemberCall<host::CommandBarControl>> ControlMembers();
std::span<const MemberCall<host::CommandBars>> CommandBarsMembers();
std::span<const MemberCall<host::RibbonUI>> RibbonMembers();
std::span<const MemberCall<host::Application>> ApplicationMembers();
std::span<const MemberCall<host::User>> UserMembers();

}  // namespace tolvane::contract
