// The pxl program, run as a user runs it.
#ifndef TESTS_TOOLS_SUPPORT_PROGRAM_H
#define TESTS_TOOLS_SUPPORT_PROGRAM_H

#include <filesystem>
#include <string>
#include <vector>

#include "tools/pxl/pictures/picture.h"

struct Outcome {
  int code = 0;  // the exit code; 128 and more for a signal
  std::string output;
  std::string errors;
};

struct Setting {
  std::string variable;
  std::string value;
};

// Runs the program with moving handles and these variables.
Outcome RunPxl(const std::vector<std::string>& arguments,
               const std::vector<Setting>& environment = {});

// The same by way of a shell that first runs `preparation`, and appends
// `redirection` to the command.
Outcome RunPxlInShell(const std::string& preparation, const std::vector<std::string>& arguments,
                      const std::string& redirection);

// The same with a terminal for both output streams; both are returned as output.
Outcome RunPxlOnATerminal(const std::vector<std::string>& arguments);

// The picture in a file.
pxl::Picture ReadPictureFile(const std::filesystem::path& path);

// A picture that comes with the sources.
std::string SamplePicture(const std::string& name);
std::vector<std::string> SamplePictures();

// Whether the text is one line, newline included, that begins with `start`.
bool IsOneLine(const std::string& text, const std::string& start);

#endif
