// The fields and colours of the general settings: object names, captions, tips.
#pragma once

#include <QString>
#include <iterator>

#include "document/display_attributes.h"
#include "document/general_settings.h"

namespace korvinth::ui {

struct FieldRow
{
    document::Setting setting;
    const char* object;
    const char* caption;
    const char* tip;
};
inline constexpr FieldRow kFieldRows[] = {
    {document::Setting::XAxisName, "xname", "&Name der x-Achse:", "höchstens 20 Zeichen"},
    {document::Setting::YAxisName, "yname", "Na&me der y-Achse:", "höchstens 20 Zeichen"},
    {document::Setting::FontPoints, "fontsize", "Schriftg&röße in Punkt:", "6 bis 36"},
    {document::Setting::AxisWidth, "axwidth", "&Breite der Achsen in Pixeln:", "0,25 bis 8"},
    {document::Setting::HelpLineWidth, "helpwidth",
     "Brei&te der Hilfslinien in Pixeln:", "0,25 bis 8"},
    {document::Setting::XStep, "xstep",
     "feste &Schrittweite in x:", "ein Term, größer als 0: pi/3"},
    {document::Setting::YStep, "ystep",
     "feste Schritt&weite in y:", "ein Term, größer als 0: 0,25"},
    {document::Setting::SampleCount, "samples", "Anzahl der &x-Werte:", "2 bis 20000"},
    {document::Setting::NumericLimit, "limit",
     "n&umerische Grenze für 1/(1+abs(x)):", "ein Term, größer als 0 und kleiner als 1"},
    {document::Setting::FamilyStep, "famstep", "&Schrittweite:", "ein Term"},
    {document::Setting::FamilyCount, "famcount", "Anzahl der Schar&kurven:", "0 bis 21"},
    {document::Setting::TimerInterval, "interval", "Zeitabstan&d in Millisekunden:", "10 bis 1000"},
};
static_assert(std::size(kFieldRows) == document::kSettingCount);

struct ColourRow
{
    document::Colour document::DisplayAttributes::*colour;
    const char* object;
    const char* caption;
};
inline constexpr ColourRow kColourRows[] = {
    {&document::DisplayAttributes::background, "colback", "&Hintergrund:"},
    {&document::DisplayAttributes::axis_colour, "colaxes", "Achs&en:"},
    {&document::DisplayAttributes::number_colour, "colnumbers", "&Zahlen:"},
    {&document::DisplayAttributes::help_line_colour, "colhelp", "Hilfs&linien:"},
    {&document::DisplayAttributes::extra_help_line_colour, "colhelpdopp", "&weitere Hilfslinien:"},
    {&document::DisplayAttributes::line_colour, "collines", "zusätzliche Ge&raden:"},
};

// As those who listen hear it.
inline QString WithoutMnemonic(QString caption)
{
    caption.remove('&');
    if (caption.endsWith(':')) caption.chop(1);
    return caption;
}

inline constexpr int kSettingsMargin = 12;
inline constexpr int kSettingsSpacing = 6;

}  // namespace korvinth::ui
