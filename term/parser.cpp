#include "term/parser.h"

#include <algorithm>
#include <array>

namespace korvinth::term {

namespace {

// Binding strength of the operators between two operands; 0 for those that are none.
constexpr int Precedence(Operator op)
{
    switch (op) {
        case Operator::Imp: return 1;
        case Operator::Eqv: return 2;
        case Operator::Xor: return 3;
        case Operator::Or: return 4;
        case Operator::And: return 5;
        case Operator::Equal:
        case Operator::NotEqual:
        case Operator::Less:
        case Operator::Greater:
        case Operator::LessEqual:
        case Operator::GreaterEqual: return 7;
        case Operator::Add:
        case Operator::Subtract: return 8;
        case Operator::Multiply:
        case Operator::Divide:
        case Operator::IntDivide: return 9;
        case Operator::Power: return 11;
        default: return 0;
    }
}
constexpr int kLoosest = 1;
constexpr int kNotPrecedence = 6;
constexpr int kProductPrecedence = 9;
constexpr int kSignPrecedence = 10;

class TreeBuilder
{
public:
    TreeBuilder(const std::vector<Token>& tokens, const Limits& limits, SyntaxTree& tree)
        : tokens_(tokens), limits_(limits), tree_(tree)
    {
    }

    ParseFault Run()
    {
        tree_.Clear();
        if (tokens_.size() == 1) return {};
        tree_.root = Expression(kLoosest);
        if (fault_.error == Error::None && Current().kind != TokenKind::End) Invalid();
        if (tree_.nodes.size() > limits_.instructions) fault_ = {Error::OutOfSpace, {}};
        if (fault_.error != Error::None) {
            tree_.Clear();
            return fault_;
        }
        return argument_fault_;
    }

private:
    const Token& Current() const { return tokens_[position_]; }
    void Next() { ++position_; }

    // Every failing production returns -1; the fault that was found first stays.
    std::int32_t Fail(Error error)
    {
        if (fault_.error == Error::None) fault_.error = error;
        return -1;
    }
    std::int32_t Invalid() { return Fail(Error::InvalidTerm); }

    std::int32_t Add(const SyntaxNode& node)
    {
        tree_.nodes.push_back(node);
        return static_cast<std::int32_t>(tree_.nodes.size()) - 1;
    }
    std::uint32_t DepthOf(std::int32_t node) const
    {
        return node < 0 ? 0 : tree_.nodes[static_cast<std::size_t>(node)].depth;
    }
    std::int32_t AddOperation(Operator op, std::int32_t left, std::int32_t right)
    {
        SyntaxNode node{SyntaxKind::Operation, op, left, right, 0, {}};
        node.depth = std::max(DepthOf(left), DepthOf(right)) + 1;
        return Add(node);
    }

    // An operand followed by operators that bind at least as tightly as `loosest`.
    std::int32_t Expression(int loosest)
    {
        std::int32_t left = Prefix(loosest);
        while (left >= 0) {
            Operator op = Operator::None;
            int precedence = 0;
            if (Current().kind == TokenKind::Operator) {
                op = Current().op;
                precedence = Precedence(op);
                if (precedence == 0) {
                    left = Invalid();
                    break;
                }
            } else if (StartsFactor()) {
                op = Operator::Multiply;
                precedence = kProductPrecedence;
                if (!ends_factor_) {
                    left = Invalid();
                    break;
                }
            } else {
                break;
            }
            if (precedence < loosest) break;
            if (Current().kind == TokenKind::Operator) Next();
            // Powers group to the right and their exponent may carry a sign: 2^-1.
            const std::int32_t right =
                op == Operator::Power ? Nested(kSignPrecedence) : Expression(precedence + 1);
            left = right < 0 ? -1 : AddOperation(op, left, right);
        }
        return left;
    }

    // The operand of a prefix sign or a power: 2^2^2..., ----1 nest like brackets do.
    std::int32_t Nested(int loosest)
    {
        if (++nesting_ > limits_.nesting) return Fail(Error::OutOfSpace);
        const std::int32_t node = Expression(loosest);
        --nesting_;
        return node;
    }

    // Tokens that may follow an operand without a sign between. A number may not: 1.5.3, 2 3.
    bool StartsFactor() const
    {
        switch (Current().kind) {
            case TokenKind::Name:
            case TokenKind::Function:
            case TokenKind::NotCall:
            case TokenKind::LeftBracket: return true;
            default: return false;
        }
    }

    std::int32_t Prefix(int loosest)
    {
        if (Current().kind != TokenKind::Operator) return Postfix();
        const Operator op = Current().op;
        if (op == Operator::Not && loosest <= kNotPrecedence) {
            Next();
            const std::int32_t operand = Nested(kNotPrecedence);
            return operand < 0 ? -1 : AddOperation(Operator::Not, operand, -1);
        }
        if (op == Operator::Subtract || op == Operator::Add) {
            Next();
            const std::int32_t operand = Nested(kSignPrecedence);
            if (operand < 0 || op == Operator::Add) return operand;
            return AddOperation(Operator::Negate, operand, -1);
        }
        return Invalid();
    }

    std::int32_t Postfix()
    {
        std::int32_t operand = Primary();
        while (operand >= 0 && Current().kind == TokenKind::Operator &&
               Current().op == Operator::Factorial) {
            Next();
            operand = AddOperation(Operator::Factorial, operand, -1);
            ends_factor_ = false;
        }
        return operand;
    }

    std::int32_t Primary()
    {
        const Token token = Current();
        Next();
        std::int32_t node = -1;
        switch (token.kind) {
            case TokenKind::Number:
                node = Add({SyntaxKind::Number, Operator::None, -1, -1, token.value, token.text});
                break;
            case TokenKind::Name:
                node = Add({SyntaxKind::Name, Operator::None, -1, -1, 0, token.text});
                break;
            case TokenKind::Function:
            case TokenKind::NotCall: node = Call(token); break;
            case TokenKind::LeftBracket:
                node = Expression(kLoosest);
                if (node >= 0) node = Close(node);
                break;
            default: --position_; return Invalid();
        }
        ends_factor_ = true;
        return node;
    }

    std::int32_t Close(std::int32_t node)
    {
        if (Current().kind != TokenKind::RightBracket) return Invalid();
        Next();
        return node;
    }

    std::int32_t Call(const Token& token)
    {
        Next();  // the bracket
        std::array<std::int32_t, kMaxFunctionParameters> arguments{};
        std::size_t count = 0;
        if (Current().kind != TokenKind::RightBracket) {
            while (true) {
                const std::int32_t argument = Expression(kLoosest);
                if (argument < 0) return -1;
                if (count == arguments.size()) return Fail(Error::OutOfSpace);
                arguments[count++] = argument;
                if (Current().kind != TokenKind::Comma) break;
                Next();
            }
        }
        if (token.kind == TokenKind::NotCall) return Close(NotCall(token, arguments[0], count));
        SyntaxNode node{SyntaxKind::Call, Operator::None, 0, 0, 0, token.text};
        node.left = static_cast<std::int32_t>(tree_.arguments.size());
        node.right = static_cast<std::int32_t>(count);
        for (std::size_t i = 0; i < count; ++i) {
            node.depth = std::max(node.depth, DepthOf(arguments[i]) + 1);
        }
        tree_.arguments.insert(tree_.arguments.end(), arguments.begin(),
                               arguments.begin() + static_cast<std::ptrdiff_t>(count));
        return Close(Add(node));
    }

    std::int32_t NotCall(const Token& token, std::int32_t argument, std::size_t count)
    {
        if (count == 1) return AddOperation(Operator::Not, argument, -1);
        if (argument_fault_.error == Error::None) {
            argument_fault_ = {Error::ArgumentCount, token.text};
        }
        return Add({SyntaxKind::Number, Operator::None, -1, -1, 0, token.text});
    }

    const std::vector<Token>& tokens_;
    const Limits& limits_;
    SyntaxTree& tree_;
    std::size_t position_ = 0;
    std::size_t nesting_ = 0;
    bool ends_factor_ = false;  // a factor without a sign may follow the operand just read
    ParseFault fault_;
    ParseFault argument_fault_;
};

}  // namespace

ParseFault ParseTokens(const std::vector<Token>& tokens, const Limits& limits, SyntaxTree& tree)
{
    return TreeBuilder(tokens, limits, tree).Run();
}

}  // namespace korvinth::term
