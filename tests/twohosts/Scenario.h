#pragma once

#include <string>

#include "src/host/Application.h"

namespace tolvane::twohosts {

// One piece of work, written once against the port, that every host must do alike. What is seen is told as text, a line
// a cell or fact, so that what two hosts saw can be compared.

// Makes the book that the work begins with.
void MakeInput(const host::Application& application, const std::string& path);
// Opens the book, reads its table, inserts and deletes rows, writes a block with formulas, names and protects it, saves
// it under the other path and closes it. Tells of the book before it was saved.
std::string Work(const host::Application& application, const std::string& input, const std::string& output);
// Tells of a book as it is in a file.
std::string Read(const host::Application& application, const std::string& path);

// What a program of one host does with its arguments: "input FILE", "work INPUT OUTPUT TOLD", "read FILE TOLD".
// std::invalid_argument for others.
void Run(const host::Application& application, int argc, char** argv);

}  // namespace tolvane::twohosts
