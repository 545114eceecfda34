// The component that the office loads to do what its program is for. All else stands in the program (Office.cpp), since
// not every library that it needs can be part of a shared one.
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

com::sun::star::uno::XInterface* NewOfficeService(com::sun::star::uno::XComponentContext* context);

extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* tolvane_OfficeService_get(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  return NewOfficeService(context);
}
