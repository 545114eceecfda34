// The component that the office loads to run a suite of tests. The suite itself stands in the program that is this
// office (OfficeProgram.cpp), since not every library that it needs can be part of a shared one.
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

com::sun::star::uno::XInterface* NewSuiteRun(com::sun::star::uno::XComponentContext* context);

extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* tolvane_SuiteRun_get(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  return NewSuiteRun(context);
}
