// Which fields of a World an operation has changed.
#ifndef TESTS_SUPPORT_MODULE_RECORD_FIELDS_H
#define TESTS_SUPPORT_MODULE_RECORD_FIELDS_H

#include <string>
#include <vector>

#include "PXL.h"

// The names of the fields that differ, in the order of the record.
std::vector<std::string> ChangedFields(const PXL_World& before, const PXL_World& after);

bool operator==(const Rect& a, const Rect& b);

#endif
