#pragma once

#include <pugixml.hpp>

/// Merges what the user file of an older catalog holds into the catalog: the user's data about its listings, then the
/// listings that the user added. Both trees change; linear in their size. Throws ProgramError when an ID is beyond 32
/// bits.
void MergeUserData(pugi::xml_node catalog, pugi::xml_node user);
