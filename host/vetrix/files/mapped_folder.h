// Where mapped files are made when nobody says so.
#ifndef VETRIX_MAPPED_FOLDER_H
#define VETRIX_MAPPED_FOLDER_H

#include <string>

namespace vetrix {

// The system's own place, in UTF-8. May throw std::system_error.
std::string DefaultMappedFolder();

}  // namespace vetrix

#endif
