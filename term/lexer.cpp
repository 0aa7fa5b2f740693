#include "term/lexer.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>

namespace korvinth::term {

namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

struct Sign
{
    std::string_view text;
    Operator op;
};

// Longer signs before the shorter ones that they begin with.
constexpr Sign kSigns[] = {
    {"==", Operator::Equal},     {"=", Operator::Equal},        {"<>", Operator::NotEqual},
    {"!=", Operator::NotEqual},  {"<=", Operator::LessEqual},   {">=", Operator::GreaterEqual},
    {"<", Operator::Less},       {">", Operator::Greater},      {"+", Operator::Add},
    {"-", Operator::Subtract},   {"*", Operator::Multiply},     {"/", Operator::Divide},
    {"\\", Operator::IntDivide}, {"^", Operator::Power},        {"!", Operator::Factorial},
    {"≤", Operator::LessEqual},  {"≥", Operator::GreaterEqual}, {"≠", Operator::NotEqual},
};

struct Radix
{
    char letter;
    int base;
    Error error;
};
constexpr Radix kRadixes[] = {
    {'b', 2, Error::BinaryNumber}, {'o', 8, Error::OctalNumber}, {'h', 16, Error::HexNumber}};

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

constexpr int DigitValue(char c)
{
    if (IsDigit(c)) return c - '0';
    const char lower = Lower(c);
    return lower >= 'a' && lower <= 'z' ? lower - 'a' + 10 : 99;
}

// Value of a literal that from_chars found too large or too small for a double.
double OutOfRangeValue(std::string_view literal)
{
    const std::size_t e = std::min(literal.find_first_of("eE"), literal.size());
    const std::size_t first = literal.find_first_of("123456789");
    const std::size_t point = std::min(literal.substr(0, e).find('.'), e);
    // Decimal exponent of the first non-zero digit, plus the written exponent.
    double exponent = static_cast<double>(point) - static_cast<double>(first);
    if (e < literal.size()) {
        int written = 0;
        std::string_view text = literal.substr(e + 1);
        const bool negative = text.front() == '-';
        if (!IsDigit(text.front())) text.remove_prefix(1);
        const auto parsed = std::from_chars(text.data(), text.data() + text.size(), written);
        const double size = parsed.ec == std::errc{} ? written : std::numeric_limits<int>::max();
        exponent += negative ? -size : size;
    }
    return exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

class Scanner
{
public:
    Scanner(std::string_view text, const Definitions& definitions, std::vector<Token>& tokens)
        : text_(text), definitions_(definitions), limits_(definitions.GetLimits()), tokens_(tokens)
    {
    }

    Error Run()
    {
        tokens_.clear();
        if (text_.size() > limits_.characters && CharacterCount() > limits_.characters) {
            return Error::OutOfSpace;
        }
        while (position_ < text_.size()) Step();
        tokens_.push_back({TokenKind::End, Operator::None, 0, text_.substr(text_.size())});
        if (deepest_ > limits_.nesting || instructions_ > limits_.instructions) {
            return Error::OutOfSpace;
        }
        if (unmatched_ || depth_ != 0) return Error::Brackets;
        return fault_;
    }

private:
    std::size_t CharacterCount() const
    {
        return static_cast<std::size_t>(std::count_if(
            text_.begin(), text_.end(), [](char c) { return (c & '\xC0') != '\x80'; }));
    }

    void Fault(Error error)
    {
        // A quotation mark counts wherever it stands.
        if (fault_ == Error::None || error == Error::Quotes) fault_ = error;
    }

    void Add(TokenKind kind, Operator op, double value, std::size_t length)
    {
        tokens_.push_back({kind, op, value, text_.substr(position_, length)});
        position_ += length;
    }

    void Step()
    {
        const char c = text_[position_];
        if (IsBlank(c)) {
            ++position_;
        } else if (IsDigit(c) ||
                   (c == '.' && position_ + 1 < text_.size() && IsDigit(text_[position_ + 1]))) {
            Number();
        } else if (IsLetter(c)) {
            Name();
        } else if (c == '(') {
            deepest_ = std::max(deepest_, ++depth_);
            Add(TokenKind::LeftBracket, Operator::None, 0, 1);
        } else if (c == ')') {
            if (depth_ == 0) {
                unmatched_ = true;
            } else {
                --depth_;
            }
            Add(TokenKind::RightBracket, Operator::None, 0, 1);
        } else if (c == ',') {
            Add(TokenKind::Comma, Operator::None, 0, 1);
        } else if (c == '&') {
            RadixNumber();
        } else {
            SignOrFault();
        }
    }

    // Digits, one point, and an exponent only where digits follow the e.
    void Number()
    {
        std::size_t end = position_;
        const auto digits = [&] {
            while (end < text_.size() && IsDigit(text_[end])) ++end;
        };
        digits();
        if (end < text_.size() && text_[end] == '.') {
            ++end;
            digits();
        }
        if (end < text_.size() && Lower(text_[end]) == 'e') {
            std::size_t exponent = end + 1;
            if (exponent < text_.size() && (text_[exponent] == '+' || text_[exponent] == '-')) {
                ++exponent;
            }
            if (exponent < text_.size() && IsDigit(text_[exponent])) {
                end = exponent;
                digits();
            }
        }
        const std::string_view literal = text_.substr(position_, end - position_);
        double value = 0;
        const auto parsed = std::from_chars(literal.data(), literal.data() + literal.size(), value);
        if (parsed.ec == std::errc::result_out_of_range) value = OutOfRangeValue(literal);
        ++instructions_;
        Add(TokenKind::Number, Operator::None, value, literal.size());
    }

    void RadixNumber()
    {
        const char letter = position_ + 1 < text_.size() ? Lower(text_[position_ + 1]) : '\0';
        const auto* radix = std::find_if(std::begin(kRadixes), std::end(kRadixes),
                                         [&](const Radix& r) { return r.letter == letter; });
        if (radix == std::end(kRadixes)) {
            Fault(Error::InvalidTerm);
            ++position_;
            return;
        }
        std::size_t end = position_ + 2;
        double value = 0;
        bool valid = true;
        while (end < text_.size() && (IsDigit(text_[end]) || IsLetter(text_[end]))) {
            const int digit = DigitValue(text_[end]);
            valid = valid && digit < radix->base;
            value = value * radix->base + digit;
            ++end;
        }
        if (!valid || end == position_ + 2) Fault(radix->error);
        ++instructions_;
        Add(TokenKind::Number, Operator::None, value, end - position_);
    }

    void Name()
    {
        std::size_t end = position_;
        while (end < text_.size() && (IsLetter(text_[end]) || IsDigit(text_[end]))) ++end;
        const std::size_t length = end - position_;
        const bool bracket = end < text_.size() && text_[end] == '(';
        const Operator op = definitions_.FindOperatorWord(text_.substr(position_, length));
        ++instructions_;
        if (op == Operator::Not && bracket) {
            Add(TokenKind::NotCall, op, 0, length);
        } else if (op != Operator::None) {
            Add(TokenKind::Operator, op, 0, length);
        } else {
            Add(bracket ? TokenKind::Function : TokenKind::Name, Operator::None, 0, length);
        }
    }

    void SignOrFault()
    {
        const std::string_view rest = text_.substr(position_);
        for (const Sign& sign : kSigns) {
            if (rest.starts_with(sign.text)) {
                ++instructions_;
                Add(TokenKind::Operator, sign.op, 0, sign.text.size());
                return;
            }
        }
        Fault(rest.front() == '"' ? Error::Quotes : Error::InvalidTerm);
        ++position_;
    }

    std::string_view text_;
    const Definitions& definitions_;
    const Limits& limits_;
    std::vector<Token>& tokens_;
    std::size_t position_ = 0;
    std::size_t depth_ = 0;
    std::size_t deepest_ = 0;
    std::size_t instructions_ = 0;
    bool unmatched_ = false;
    Error fault_ = Error::None;
};

}  // namespace

Error Lex(std::string_view text, const Definitions& definitions, std::vector<Token>& tokens)
{
    return Scanner(text, definitions, tokens).Run();
}

}  // namespace korvinth::term
