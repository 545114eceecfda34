// The component that the office loads to run the contract suite. The suite itself stands in the program that is this
// office (Office.cpp), since not every library that it needs can be part of a shared one.
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

com::sun::star::uno::XInterface* NewContractRun(com::sun::star::uno::XComponentContext* context);

extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* tolvane_ContractRun_get(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  return NewContractRun(context);
}
