#include "tests/contract/Run.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <stdexcept>

#include "src/host/Errors.h"
#include "tests/contract/cases/Handles.h"

namespace tolvane::contract {
namespace {

class FunctionTest : public ::testing::Test {
 public:
  explicit FunctionTest(std::function<void()> body) : body_(std::move(body)) {}
  void TestBody() override { body_(); }

 private:
  std::function<void()> body_;
};

void Register(const std::string& suite, const std::string& name, const std::function<void()>& body) {
  ::testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [body]() -> ::testing::Test* { return new FunctionTest(body); });
}

// Errors that leave a case are failures of it, also where nobody else would catch them.
void Guarded(const std::function<void()>& body) {
  try {
    body();
  } catch (const host::HostError& error) {
    ADD_FAILURE() << "error " << static_cast<int>(error.number()) << ": " << error.what();
  } catch (const std::exception& error) {
    ADD_FAILURE() << "exception: " << error.what();
  }
}

template <class HandleType>
void Collect(std::span<const MemberCall<HandleType>> calls, std::set<std::pair<std::string, std::string>>& into) {
  for (const auto& call : calls) into.emplace(call.member, call.access);
}

void CheckHandleTables(const std::vector<Member>& members) {
  std::set<std::pair<std::string, std::string>> called, listed;
  Collect(RangeMembers(), called);
  Collect(WorksheetMembers(), called);
  Collect(WorkbookMembers(), called);
  Collect(NameMembers(), called);
  Collect(NamesMembers(), called);
  Collect(WindowMembers(), called);
  Collect(CommandBarMembers(), called);
  Collect(ControlMembers(), called);
  Collect(CommandBarsMembers(), called);
  Collect(RibbonMembers(), called);
  Collect(ApplicationMembers(), called);
  Collect(UserMembers(), called);
  for (const Member& member : members) listed.emplace(member.name, member.access);
  EXPECT_EQ(called, listed);
}

// The check of completeness, shown to find what it is there for.
void CheckPlantedViolations(const Run& run) {
  ASSERT_TRUE(CoverageProblems(run.members(), run.cases(), run.traces()).empty());

  std::vector<Member> members = run.members();
  members.push_back({"Range.Planted", "get", "-"});
  EXPECT_EQ(CoverageProblems(members, run.cases(), run.traces()).size(), 1u);

  // Reading a member does not cover setting it.
  std::map<std::string, Trace> traces = run.traces();
  for (auto& [name, trace] : traces) trace.erase({"Range.Hidden", host::Access::Write});
  EXPECT_EQ(CoverageProblems(run.members(), run.cases(), traces).size(), 1u);

  std::vector<ContractCase> cases = run.cases();
  cases.front().members.push_back("Application.Quit");
  EXPECT_EQ(CoverageProblems(run.members(), cases, run.traces()).size(), 1u);

  // A case that is about a member has to call it.
  cases = run.cases();
  cases.push_back({"Planted", "CallsNothing", {"Range.Value"}, kPort, [](HostUnderTest&) {}});
  traces = run.traces();
  traces["Planted.CallsNothing"] = {};
  EXPECT_EQ(CoverageProblems(run.members(), cases, traces).size(), 1u);
}

}  // namespace

Run::Run(std::unique_ptr<HostUnderTest> host, std::vector<ContractCase> cases, std::vector<Member> members,
         std::map<std::string, KnownDifference> differences)
    : host_(std::move(host)),
      cases_(std::move(cases)),
      allMembers_(std::move(members)),
      members_(allMembers_),
      differences_(std::move(differences)) {
  if (host_->HasRibbon()) return;
  std::erase_if(cases_, [](const ContractCase& one) { return one.suite == "Ribbon"; });
  std::erase_if(members_, [](const Member& member) { return member.name.starts_with("RibbonUI."); });
}

void Run::RunCase(const ContractCase& one) {
  Tracer tracer;
  const auto body = [&] {
    host_->Fresh();
    const host::HookScope scope(host_->application().body()->gate(), tracer);
    one.run(*host_);
    for (const std::string& question : host_->Unanswered()) ADD_FAILURE() << question;
  };
  if (!differences_.contains(one.FullName())) {
    Guarded(body);
    traces_[one.FullName()] = tracer.trace();
    return;
  }
  ::testing::TestPartResultArray results;
  {
    ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    Guarded(body);
  }
  traces_[one.FullName()] = tracer.trace();
  for (int i = 0; i < results.size(); ++i) {
    if (results.GetTestPartResult(i).failed()) {
      ++knownFailures_;
      return;
    }
  }
  ADD_FAILURE() << one.FullName() << " no longer differs: take it off the list of known differences.";
}

void Run::CheckKnownDifferences() {
  const ContractCase failing{"Planted", "Fails", {}, kPort, [](HostUnderTest&) { ADD_FAILURE() << "planted"; }};
  const ContractCase throwing{
      "Planted", "Throws", {}, kPort, [](HostUnderTest&) { throw std::runtime_error("planted"); }};
  const ContractCase passing{"Planted", "Passes", {}, kPort, [](HostUnderTest&) {}};
  const KnownDifference planted{"planted", "none"};
  Run run(std::move(host_), {failing, throwing, passing}, allMembers_,
          {{"Planted.Fails", planted}, {"Planted.Throws", planted}, {"Planted.Passes", planted}});
  ::testing::TestPartResultArray failures;
  {
    ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
    run.RunCase(failing);
    run.RunCase(throwing);
  }
  EXPECT_EQ(failures.size(), 0);
  EXPECT_EQ(run.knownFailures(), 2);
  {
    ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
    run.RunCase(passing);
  }
  ASSERT_EQ(failures.size(), 1);
  EXPECT_NE(std::string(failures.GetTestPartResult(0).message()).find("no longer differs"), std::string::npos);
  host_ = std::move(run.host_);

  EXPECT_EQ(ParseKnownDifferences("# comment\ncase\treason\tguard\nA.B\tslow\tretries\n").size(), 1u);
  for (const char* text : {"case\treason\tguard\nA.B\tslow\n", "case\treason\tguard\nA.B\t\tretries\n",
                           "case\treason\tguard\nA.B\ta\tb\nA.B\ta\tb\n"}) {
    EXPECT_THROW(ParseKnownDifferences(text), std::runtime_error) << text;
  }
}

void Run::Register() {
  for (const ContractCase& one : cases_) {
    contract::Register(one.suite, one.name, [this, &one] {
      RunCase(one);
      if (::testing::Test::HasFailure()) ++casesFailed_;
    });
  }

  contract::Register("Suite", "CasesHaveNamesOfTheirOwn", [this] {
    std::set<std::string> names;
    for (const ContractCase& one : cases_) EXPECT_TRUE(names.insert(one.FullName()).second) << one.FullName();
  });
  contract::Register("Suite", "KnownDifferencesAreCases", [this] {
    for (const auto& [name, difference] : differences_) {
      EXPECT_TRUE(std::any_of(cases_.begin(), cases_.end(), [&](const ContractCase& one) {
        return one.FullName() == name;
      })) << name;
    }
  });
  contract::Register("Suite", "TheListOfKnownDifferencesWorks", [this] { CheckKnownDifferences(); });
  contract::Register("Suite", "HandleTablesHaveEveryMember", [this] { CheckHandleTables(allMembers_); });
  contract::Register("Suite", "EveryMemberIsCalledByACaseAboutIt", [this] {
    if (traces_.size() < cases_.size()) GTEST_SKIP() << "Only a run of all cases can tell.";
    for (const std::string& problem : CoverageProblems(members_, cases_, traces_)) ADD_FAILURE() << problem;
  });
  contract::Register("Suite", "TheCheckOfMembersCanFail", [this] {
    if (traces_.size() < cases_.size()) GTEST_SKIP() << "Only a run of all cases can tell.";
    CheckPlantedViolations(*this);
  });
}

std::string Summary(const std::string& hostName, const Run& run) {
  const int passed = run.casesRun() - run.casesFailed() - run.knownFailures();
  std::ostringstream text;
  text << hostName << ": " << passed << " of " << run.casesRun() << " cases pass (" << std::fixed
       << std::setprecision(1) << (run.casesRun() == 0 ? 0.0 : 100.0 * passed / run.casesRun()) << " %), "
       << run.knownFailures() << " known differences";
  return text.str();
}

}  // namespace tolvane::contract
