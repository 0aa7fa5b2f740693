#include "document/settings_file.h"

#include <optional>
#include <utility>

#include "document/attributes_text.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::string_view kSection = "Korvinth";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNewLineBreak = "\r\n";
constexpr std::string_view kBlanks = " \t";

struct Key
{
    std::string_view name;
    std::string (*text)(const DisplayAttributes&);
};

// Written and read in this order.
constexpr Key kAttributes = {"Attribs", AttributesText};
struct TableKey : Key
{
    void (*take)(std::string_view, DisplayAttributes&);
};
constexpr TableKey kTables[] = {
    {{"Coltab", ColourTableText}, TakeColourTable},
    {{"LDicke", LineWidthsText}, TakeLineWidths},
    {{"LArt", LineTypesText}, TakeLineTypes},
};

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool SameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && term::LowerCase(a) == term::LowerCase(b);
}

// A part of a profile, by offsets.
struct Place
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

// The lines of a profile, one after the other.
class ProfileLines
{
public:
    explicit ProfileLines(std::string_view profile) : profile_(profile)
    {
        if (profile.starts_with(kByteOrderMark)) next_ = kByteOrderMark.size();
    }

    bool Next()
    {
        if (next_ >= profile_.size()) return false;
        line_.begin = next_;
        line_.end = std::min(profile_.find('\n', next_), profile_.size());
        next_ = line_.end + 1;
        if (line_.end > line_.begin && profile_[line_.end - 1] == '\r') --line_.end;
        return true;
    }

    // Of the line, without its break.
    Place Offsets() const { return line_; }
    std::string_view Text() const
    {
        return Trim(profile_.substr(line_.begin, line_.end - line_.begin));
    }

private:
    std::string_view profile_;
    Place line_;
    std::size_t next_ = 0;
};

struct FoundKey
{
    std::optional<std::size_t> section_end;  // behind the last line of the section with a text
    std::optional<Place> value;              // behind the "=", up to the end of the line
};

FoundKey FindKey(std::string_view profile, std::string_view section, std::string_view key)
{
    FoundKey found;
    for (ProfileLines lines(profile); lines.Next();) {
        const std::string_view line = lines.Text();
        if (line.starts_with('[')) {
            if (found.section_end) break;
            const std::string_view name = line.substr(1, line.find(']') - 1);
            if (SameName(Trim(name), section)) found.section_end = lines.Offsets().end;
        } else if (found.section_end && !line.empty()) {
            found.section_end = lines.Offsets().end;
            const std::size_t equals = line.find('=');
            if (line.front() == ';' || equals == std::string_view::npos) continue;
            if (!SameName(Trim(line.substr(0, equals)), key)) continue;
            const Place offsets = lines.Offsets();
            found.value = {profile.find('=', offsets.begin) + 1, offsets.end};
            break;
        }
    }
    return found;
}

// As the profile breaks its lines.
std::string_view LineBreakOf(std::string_view profile)
{
    const std::size_t first = profile.find('\n');
    if (first == std::string_view::npos) return kNewLineBreak;
    return first > 0 && profile[first - 1] == '\r' ? kNewLineBreak : "\n";
}

std::string KeyLine(std::string_view key, std::string_view value)
{
    return std::string(key) + "=" + std::string(value);
}

}  // namespace

std::string ProfileValue(std::string_view profile, std::string_view section, std::string_view key)
{
    const FoundKey found = FindKey(profile, section, key);
    if (!found.value) return "";
    const Place place = *found.value;
    // Deliberate: what is longer is cut.
    return std::string(
        Trim(profile.substr(place.begin, place.end - place.begin)).substr(0, kLongestProfileValue));
}

void SetProfileValue(std::string& profile, std::string_view section, std::string_view key,
                     std::string_view value)
{
    const FoundKey found = FindKey(profile, section, key);
    const std::string line_break(LineBreakOf(profile));
    if (found.value) {
        profile.replace(found.value->begin, found.value->end - found.value->begin, value);
    } else if (found.section_end) {
        profile.insert(*found.section_end, line_break + KeyLine(key, value));
    } else {
        if (!profile.empty() && profile != kByteOrderMark && profile.back() != '\n') {
            profile += line_break;
        }
        profile += "[" + std::string(section) + "]" + line_break + KeyLine(key, value) + line_break;
    }
}

SettingsFile::SettingsFile(files::FileSystem& disk, const files::Path& directory)
    : disk_(disk), file_(directory / kSettingsFileName)
{
}

std::error_code SettingsFile::WriteSettings(const DisplayAttributes& attributes)
{
    if (unread_) return unread_;
    std::string profile;
    std::error_code fault;
    if (disk_.Exists(file_, fault)) fault = disk_.Read(file_, profile);
    if (fault) return fault;
    const std::string before = profile;
    const auto set = [&](const Key& key) {
        SetProfileValue(profile, kSection, key.name, key.text(attributes));
    };
    set(kAttributes);
    for (const Key& key : kTables) set(key);
    if (profile == before) return {};  // waiting for the disk would delay every start
    return files::ReplaceFile(disk_, file_, profile);
}

void SettingsFile::ReadSettings(DisplayAttributes& attributes)
{
    std::string profile;
    unread_ = disk_.Read(file_, profile);  // has no values then
    if (unread_ == std::errc::no_such_file_or_directory) unread_.clear();
    for (const TableKey& key : kTables) {
        key.take(ProfileValue(profile, kSection, key.name), attributes);
    }
    TakeAttributesText(ProfileValue(profile, kSection, kAttributes.name),
                       AttributeScope::Everything, attributes);
}

}  // namespace korvinth::document
