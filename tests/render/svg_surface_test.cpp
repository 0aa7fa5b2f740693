#include "render/svg_surface.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStringList>
#include <QXmlStreamReader>
#include <map>
#include <vector>

#include "render/dash_pattern.h"
#include "render/recording_surface.h"
#include "render/svg_path.h"
#include "vector_scene.h"

namespace korvinth::render {
namespace {

using Attributes = std::map<QString, QString>;

struct SvgElement
{
    QString name;
    Attributes attributes;  // those of its class included
    QString text;
};

// The elements in order; none when the text is no well-formed document.
std::vector<SvgElement> Parse(const std::string& bytes)
{
    std::vector<SvgElement> elements;
    std::map<QString, Attributes> classes;
    QXmlStreamReader reader(QByteArray::fromStdString(bytes));
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            SvgElement element{reader.name().toString(), {}, ""};
            for (const auto& attribute : reader.attributes()) {
                element.attributes[attribute.name().toString()] = attribute.value().toString();
            }
            if (element.attributes.contains("class")) {
                for (const auto& [name, value] : classes[element.attributes["class"]]) {
                    element.attributes[name] = value;
                }
            }
            elements.push_back(element);
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            elements.back().text += reader.text();
        } else if (reader.isEndElement() && reader.name() == QLatin1String("style")) {
            static const QRegularExpression rule("\\.(\\w+)\\{([^}]*)\\}");
            for (auto match = rule.globalMatch(elements.back().text); match.hasNext();) {
                const QRegularExpressionMatch one = match.next();
                for (const QString& item : one.captured(2).split(';')) {
                    classes[one.captured(1)][item.section(':', 0, 0)] = item.section(':', 1);
                }
            }
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return elements;
}

std::vector<SvgElement> Named(const std::vector<SvgElement>& elements, const char* name)
{
    std::vector<SvgElement> found;
    for (const SvgElement& element : elements) {
        if (element.name == QLatin1String(name)) found.push_back(element);
    }
    return found;
}

// Reads a path as the notation is published.
std::vector<GridPoint> PathPoints(const QString& path)
{
    static const QRegularExpression token("[A-Za-z]|-?\\d+");
    std::vector<GridPoint> points;
    GridPoint at;
    QChar command;
    auto tokens = token.globalMatch(path);
    while (tokens.hasNext()) {
        QString next = tokens.next().captured();
        if (next[0].isLetter()) {
            command = next[0];
            if (command == 'z') break;
            next = tokens.next().captured();
        }
        const int first = next.toInt();
        switch (command.toLatin1()) {
            case 'h': at.x += first; break;
            case 'H': at.x = first; break;
            case 'v': at.y += first; break;
            case 'V': at.y = first; break;
            case 'l': at = {at.x + first, at.y + tokens.next().captured().toInt()}; break;
            case 'M':
            case 'L': at = {first, tokens.next().captured().toInt()}; break;
            default: ADD_FAILURE() << "command " << command.toLatin1();
        }
        points.push_back(at);
    }
    return points;
}

QString ColourName(Colour colour)
{
    return QString("#%1%2%3")
        .arg(document::Red(colour), 2, 16, QChar('0'))
        .arg(document::Green(colour), 2, 16, QChar('0'))
        .arg(document::Blue(colour), 2, 16, QChar('0'));
}

struct SvgSurfaceTest : testing::Test
{
    SvgSurfaceTest()
    {
        DrawScene(svg);
        DrawScene(recorded);
        elements = Parse(svg.Bytes());
    }

    FixedMetrics metrics;
    SvgSurface svg{kSceneWidth, kSceneHeight, {}, metrics};
    RecordingSurface recorded{kSceneWidth * kVectorSteps, kSceneHeight* kVectorSteps, kVectorSteps};
    std::vector<SvgElement> elements;
};

TEST(SvgPath, IsAsShortAsTheNotationAllows)
{
    const std::vector<GridPoint> points{{100, 5}, {103, 5}, {103, -2}, {101, -3},
                                        {99, -2}, {1, 1},   {1, 1000}, {1, 999}};
    EXPECT_EQ(SvgPath(points, 0), "M100 5h3v-7l-2-1-2 1L1 1v999-1");
    EXPECT_EQ(PathPoints(QString::fromStdString(SvgPath(points, 0))), points);
}

TEST_F(SvgSurfaceTest, EachStrokeIsOnePathInItsLook)
{
    std::vector<SvgElement> paths;
    for (SvgElement& path : Named(elements, "path")) {
        if (!path.attributes["d"].endsWith('z')) paths.push_back(path);
    }
    std::size_t next = 0;
    for (const StrokeCommand& stroke : recorded.All<StrokeCommand>()) {
        if (stroke.pen.type == LineType::Invisible) continue;
        SCOPED_TRACE(testing::Message() << "line type " << static_cast<int>(stroke.pen.type));
        ASSERT_LT(next, paths.size());
        Attributes& look = paths[next++].attributes;
        EXPECT_EQ(PathPoints(look["d"]), Shifted(stroke.points));
        EXPECT_EQ(look["stroke"], ColourName(stroke.pen.colour));
        EXPECT_EQ(look["stroke-width"].toDouble(), stroke.pen.width * kVectorSteps);
        // Dashes and gaps with their round ends add up to the pattern.
        double period = 0;
        for (const QString& length : look["stroke-dasharray"].split(' ', Qt::SkipEmptyParts)) {
            period += length.toDouble();
        }
        EXPECT_NEAR(period, DashPattern(stroke.pen.type, stroke.pen.width).Period() * kVectorSteps,
                    0.01);
    }
    EXPECT_EQ(next, paths.size());
}

TEST_F(SvgSurfaceTest, AreasAndMarkersAreFilled)
{
    const auto polygons = recorded.All<PolygonCommand>();
    std::size_t next = 0;
    for (SvgElement& path : Named(elements, "path")) {
        if (!path.attributes["d"].endsWith('z')) continue;
        ASSERT_LT(next, polygons.size());
        const PolygonCommand& polygon = polygons[next++];
        EXPECT_EQ(PathPoints(path.attributes["d"]),
                  polygon.outlined ? Shifted(polygon.corners) : polygon.corners);
        EXPECT_EQ(path.attributes["fill"], ColourName(polygon.fill.colour));
        EXPECT_EQ(path.attributes.contains("stroke"), polygon.outlined);
    }
    EXPECT_EQ(next, polygons.size());
    ASSERT_EQ(Named(elements, "circle").size(), 1U);
    Attributes disc = Named(elements, "circle").front().attributes;
    EXPECT_EQ(disc["cx"], QString::number(13 * kVectorSteps));
    EXPECT_EQ(disc["r"], QString::number(3 * kVectorSteps));
    Attributes frame = Named(elements, "ellipse").front().attributes;
    EXPECT_EQ(frame["rx"], QString::number(4.5 * kVectorSteps));
    EXPECT_FALSE(frame.contains("fill"));
}

TEST_F(SvgSurfaceTest, TextsAreTexts)
{
    auto texts = Named(elements, "text");
    const auto wanted = recorded.All<TextCommand>();
    ASSERT_EQ(texts.size(), wanted.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Attributes& look = texts[i].attributes;
        const double height = wanted[i].font.height * kVectorSteps;
        EXPECT_EQ(texts[i].text.toStdString(), wanted[i].text);
        EXPECT_EQ(look["x"].toInt(), wanted[i].top_left.x);
        EXPECT_EQ(look["y"].toInt(), wanted[i].top_left.y + height) << "the base line";
        EXPECT_EQ(look["font-size"], QString::number(height) + "px");
        EXPECT_EQ(look["font-family"], "Arial, Liberation Sans, sans-serif");
        EXPECT_EQ(look["fill"], ColourName(wanted[i].colour));
    }
}

TEST_F(SvgSurfaceTest, StatesItsSizeAndClipsToIt)
{
    EXPECT_EQ(elements.front().attributes["viewBox"], "0 0 3200 1600");
    EXPECT_EQ(elements.front().attributes["width"], "200");
    const SvgElement clip = Named(elements, "clipPath").front();
    EXPECT_EQ(Named(elements, "g").front().attributes["clip-path"],
              "url(#" + clip.attributes.at("id") + ")");
    EXPECT_EQ(Named(elements, "rect").front().attributes,
              (Attributes{{"width", "3200"}, {"height", "1600"}}));
    const std::string in_mm = SvgSurface(200, 100, 0.25, metrics).Bytes();
    EXPECT_EQ(Parse(in_mm).front().attributes["width"], "50mm");
    EXPECT_EQ(Parse(in_mm).front().attributes["height"], "25mm");
}

TEST_F(SvgSurfaceTest, TheSameDrawingGivesTheSameBytes)
{
    SvgSurface again(kSceneWidth, kSceneHeight, {}, metrics);
    DrawScene(again);
    EXPECT_EQ(again.Bytes(), svg.Bytes());
    EXPECT_EQ(again.Bytes(), svg.Bytes()) << "asked for twice";
}

TEST(SvgSurface, StaysADocumentWhateverATextHolds)
{
    const FixedMetrics metrics;
    SvgSurface surface(10, 10, {}, metrics);
    surface.SelectFont({"A\"<&", 10});
    surface.TextOut({0, 0},
                    "\x01"
                    "a\xFF]]>\xED\xA0\x80\xEF\xBF\xBE&amp;");
    const auto texts = Named(Parse(surface.Bytes()), "text");
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts.front().text, QString("a\uFFFD]]>\uFFFD\uFFFD\uFFFD&amp;"));
}

}  // namespace
}  // namespace korvinth::render
