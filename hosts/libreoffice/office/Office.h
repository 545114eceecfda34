#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

namespace tolvane::office {

// What a program that is an office does once the office is up, on its main thread. Each such program brings its own;
// the arguments are those behind run_in_office's, the first is the program's name. The result is the program's.
int Run(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context, int argc, char** argv);

}  // namespace tolvane::office
