// pxl messages: the texts of the module.
#ifndef TOOLS_PXL_COMMANDS_MESSAGES_COMMAND_H
#define TOOLS_PXL_COMMANDS_MESSAGES_COMMAND_H

namespace pxl {

struct MessagesOptions {
  bool json = false;
};

// Returns the exit code.
int Messages(const MessagesOptions& options);

}  // namespace pxl

#endif
