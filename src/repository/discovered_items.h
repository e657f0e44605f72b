// The discovered items of a dump: empty files whose names are an item, "_" and its value.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// The items, with what their values are.
inline constexpr const char* D_ITEM_GUID = "GUID";
inline constexpr const char* D_ITEM_OBJECT_ID = "objectid";
// The GUID of the owner.
inline constexpr const char* D_ITEM_OWNER = "owner";
// An object type.
inline constexpr const char* D_ITEM_OWNER_TYPE = "ownertype";
// Bytes, as a decimal number.
inline constexpr const char* D_ITEM_SIZE = "size";
// A word of BackupStatus.
inline constexpr const char* D_ITEM_STATUS = "status";

// The value in a name of the item; returns false for a name of another one.
bool readDiscoveredItem(const std::string& name, const std::string& item, std::string& value);

// ---- of the files of an imported dump, as paths:

// The object's id in the panel. Raises RepositoryError if no file tells it.
std::string GetObjectId(const std::vector<std::string>& files);

// Raises ImportException unless the dump's object or its owner has the GUID.
void CheckObjectGuid(const std::vector<std::string>& files, const std::string& guid);

}  // namespace zelvo
