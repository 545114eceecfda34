#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace tolvane::libreoffice {

// What a program that is an office with tests in it brings: runs them, on the office's main thread, and gives back 0
// when all is well. Arguments as of a main function, for GoogleTest.
int RunSuite(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc,
             char** argv);

}  // namespace tolvane::libreoffice
