#include "document/terms_text.h"

#include "document/parameter_use.h"
#include "document/substitute_parameters.h"
#include "plot_fixture.h"

namespace korvinth::document {
namespace {

class TermsTextTest : public PlotTest
{
protected:
    void Set(std::string_view name, double value) { document.FindParameter(name)->value = value; }
    std::string Text(TermsTextMode mode) { return TermsText(document, mode); }
};

struct SubstitutionCase
{
    std::string_view behaviour, term, result;
};

// a = 3, b = -2.5, e_int = 2, q = 1e-20, x = 7 in another row
constexpr SubstitutionCase kSubstitutionCases[] = {
    {"a value stands for its name", "a+x", "3+x"},
    {"a product after a digit", "2a x", "2*3 x"},
    {"a product after a digit and a blank", "2 a", "2 *3"},
    {"a product after a superscript", "x²a", "x²*3"},
    {"a negative value in brackets", "x^b-b", "x^(-2,5)-(-2,5)"},
    {"a negative value after a digit", "2b", "2*(-2,5)"},
    {"a superscript on a value", "b²", "(-2,5)²"},
    {"no part of a name", "abs(a)+ax+a2", "abs(3)+ax+a2"},
    {"a name with an underscore", "e_int*a", "2*3"},
    {"capital letters are the same name", "A*B", "3*(-2,5)"},
    {"the exponent of a number is no name", "2e3*q", "2e3*1e-20"},
    {"what is called is a function", "a(x)+a''(x)+a (x)", "a(x)+a''(x)+a (x)"},
    {"the function's own argument stays", "x*a", "x*3"},
    {"other writing systems stay", "a·ä²😀", "3·ä²😀"},
};

TEST_F(TermsTextTest, PutsValuesInThePlaceOfParameters)
{
    Apply({"f(x)=a*b*q*e_int", "g(t)=x*t"});
    Set("a", 3);
    Set("b", -2.5);
    Set("q", 1e-20);
    Set("e_int", 2);
    Set("x", 7);
    for (const SubstitutionCase& row : kSubstitutionCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(SubstituteParameters(document, row.term, "x"), row.result);
    }
    EXPECT_EQ(SubstituteParameters(document, "x*t", "t"), "7*t");
}

TEST_F(TermsTextTest, TheTextWithValuesDrawsTheSameWhenItIsTypedInAgain)
{
    Apply({"f(x)=2a*x²b+a^b:exp(2;a)"});
    Set("a", 1.25);
    Set("b", -1e-7);
    SetParameterValue(document, parser, Index(26), 1.25);
    SetParameterValue(document, parser, Index(27), -1e-7);
    const double before = Value("f(0.7)");
    Apply({Text(TermsTextMode::WithParameterValues)});
    EXPECT_EQ(document.parameter_list, ":");
    EXPECT_DOUBLE_EQ(Value("f(0.7)"), before);
}

TEST_F(TermsTextTest, HasALineForEveryFunction)
{
    Apply({"f(x)=2 a", "", "h(t)=(", "g(x)==1", "k(t)=t"});
    EXPECT_EQ(Text(TermsTextMode::AsTyped), "f(x)=2 a\r\nh(t)=(");
    Apply({"f(x)=2 a", "h(t)=1", ""});
    EXPECT_EQ(Text(TermsTextMode::AsTyped), "f(x)=2 a\r\nh(t)=1");
    EXPECT_EQ(Text(TermsTextMode::WithParameterValues), "f(x)=2 *1\r\nh(t)=1");
    Apply({""});
    EXPECT_EQ(Text(TermsTextMode::AsTyped), "");
    EXPECT_EQ(Text(TermsTextMode::WithParameterValues), "");
}

}  // namespace
}  // namespace korvinth::document
