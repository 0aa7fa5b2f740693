// The display attributes from one run to the next, in "Korvinth.ini".
#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "document/display_attributes.h"
#include "files/file_system.h"

namespace korvinth::document {

// Profile texts: sections in brackets, lines "key=value", both found without regard to the case of
// ASCII letters. Of a section or key that occurs twice the first counts. Lines that begin with ";"
// are comments; whatever else stands between the lines is left alone.

// "" when there is none; at most kLongestProfileValue bytes.
std::string ProfileValue(std::string_view profile, std::string_view section, std::string_view key);
// Everything else in the text stays as it is; new lines end as the others do, with CR LF when there
// are none. `value` is one line.
void SetProfileValue(std::string& profile, std::string_view section, std::string_view key,
                     std::string_view value);

inline constexpr const char* kSettingsFileName = "Korvinth.ini";

class SettingsFile
{
public:
    // The disk outlives the object.
    SettingsFile(files::FileSystem& disk, const files::Path& directory);

    // The file is made when there is none. It is the old or the new one, whatever happens; one that
    // cannot be read, or could not the last time, is not replaced: its values are not known.
    std::error_code WriteSettings(const DisplayAttributes& attributes);
    // A missing file or key leaves the attributes as they are.
    void ReadSettings(DisplayAttributes& attributes);

private:
    files::FileSystem& disk_;
    files::Path file_;
    std::error_code unread_;
};

}  // namespace korvinth::document
