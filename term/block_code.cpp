#include "term/block_code.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace korvinth::term {

namespace {

// Registers a multiple of 4096 bytes apart would make the processor take stores to one for stores
// to the others.
constexpr std::size_t kRegisterStride = kBlockSize + 40;

// Registers of one term; together they take some megabytes.
constexpr std::size_t kMostRegisters = 1000;
// As many as the places of instructions can name.
constexpr std::size_t kMostUniforms = std::numeric_limits<std::uint16_t>::max();

// So many registers inside the scratch space, enlarged as needed, on a boundary of cache lines: a
// vector that straddles two lines costs twice.
double* AlignedRegisters(std::vector<double>& scratch, std::size_t count)
{
    constexpr std::size_t kLine = 64;
    const std::size_t bytes = count * kRegisterStride * sizeof(double);
    if (scratch.size() * sizeof(double) < bytes + kLine) {
        scratch.resize((bytes + kLine) / sizeof(double));
    }
    void* start = scratch.data();
    std::size_t space = scratch.size() * sizeof(double);
    return static_cast<double*>(std::align(kLine, bytes, start, space));
}

// Operands of a node as its kernels count them.
int OperandCount(Op op)
{
    if (IsLeaf(op)) return 0;
    if (op <= Op::PowerInt) return 1;
    return op <= Op::Guard ? 2 : 3;
}

std::size_t Rounded(std::size_t n) { return (n + kKernelStep - 1) / kKernelStep * kKernelStep; }

Kernel FindKernel(const KernelTable& kernels, const GraphNode& node, std::size_t uniform)
{
    const auto op = static_cast<std::size_t>(node.op);
    switch (OperandCount(node.op)) {
        case 1:
            if (node.op == Op::Factorial) return kernels.factorial;
            if (node.op == Op::PowerInt) return kernels.power_int;
            return kernels.unary[static_cast<std::size_t>(node.kernel)];
        case 2: return kernels.binary[op - kFirstBinary][uniform];
        default: return kernels.ternary[op - kFirstTernary][uniform];
    }
}

KernelExtra ExtraOf(const GraphNode& node)
{
    KernelExtra extra;
    if (node.op == Op::PowerInt) extra.exponent = node.index;
    if (node.op == Op::Unary) extra.scalar = node.scalar;
    return extra;
}

// Operations whose kernels give the same bits as the scalar code.
bool IsExact(const GraphNode& node)
{
    if (node.op == Op::Power) return false;
    if (node.op != Op::Unary) return true;
    switch (node.kernel) {
        case UnaryKernel::Lanes:
        case UnaryKernel::Negate:
        case UnaryKernel::Not:
        case UnaryKernel::Abs:
        case UnaryKernel::Sqrt:
        case UnaryKernel::Ceil:
        case UnaryKernel::Floor:
        case UnaryKernel::Truncate:
        case UnaryKernel::Round:
        case UnaryKernel::Sign: return true;
        default: return false;
    }
}

// The error of an operation outside its domain, None where it has no such error. InvalidTerm stands
// for several.
Error ErrorOfNode(const GraphNode& node)
{
    switch (node.op) {
        case Op::Unary: return node.error;
        case Op::Divide: return Error::DivisionByZero;
        case Op::IntDivide: return Error::IntegerDivisionByZero;
        case Op::Power: return Error::InvalidExponent;
        case Op::PowerInt: return node.index < 0 ? Error::InvalidExponent : Error::None;
        case Op::Factorial: return Error::InvalidTerm;
        default: return Error::None;
    }
}

Error CommonDomainError(const Graph& graph)
{
    Error common = Error::None;
    std::vector<char> exact(graph.nodes.size());
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const GraphNode& node = graph.nodes[i];
        bool operands_exact = true;
        for (const NodeId operand : OperandsOf(node)) {
            if (operand != kNoNode && exact[static_cast<std::size_t>(operand)] == 0) {
                operands_exact = false;
            }
        }
        exact[i] = operands_exact && IsExact(node) ? 1 : 0;
        const Error error = ErrorOfNode(node);
        if (error == Error::None) continue;
        if (!operands_exact || (common != Error::None && common != error)) return Error::None;
        common = error;
    }
    return common == Error::InvalidTerm ? Error::None : common;
}

}  // namespace

void BlockCode::Clear()
{
    prepared_ = false;
    code_.clear();
    uniform_nodes_.clear();
}

bool BlockCode::Prepare(const Graph& graph, const double* variable, const KernelTable& kernels)
{
    if (prepared_ && variable == variable_) return fits_;
    Clear();
    prepared_ = true;
    variable_ = variable;
    fits_ = false;
    domain_error_ = CommonDomainError(graph);

    const std::size_t count = graph.nodes.size();
    const auto index = [](NodeId id) { return static_cast<std::size_t>(id); };
    // What the result needs, how often, and what varies with the variable.
    std::vector<char> needed(count, 0);
    std::vector<char> varies(count, 0);
    std::vector<int> uses(count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        const GraphNode& node = graph.nodes[i];
        varies[i] = node.op == Op::Variable && node.cell == variable ? 1 : 0;
        for (const NodeId operand : OperandsOf(node)) {
            if (operand != kNoNode && varies[index(operand)] != 0) varies[i] = 1;
        }
    }
    needed[index(graph.root)] = 1;
    for (std::size_t i = count; i-- > 0;) {
        if (needed[i] == 0 || varies[i] == 0) continue;
        for (const NodeId operand : OperandsOf(graph.nodes[i])) {
            if (operand == kNoNode) continue;
            needed[index(operand)] = 1;
            ++uses[index(operand)];
        }
    }

    std::vector<Source> sources(count);
    std::vector<std::uint16_t> free_registers;
    registers_ = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (needed[i] == 0) continue;
        const GraphNode& node = graph.nodes[i];
        if (varies[i] == 0) {
            if (uniform_nodes_.size() == kMostUniforms) return false;
            sources[i] = {Place::Uniform, static_cast<std::uint16_t>(uniform_nodes_.size())};
            uniform_nodes_.push_back(static_cast<NodeId>(i));
            continue;
        }
        if (node.op == Op::Variable) {
            sources[i] = {Place::Input, 0};
            continue;
        }
        Instruction instruction;
        std::size_t uniform = 0;
        const NodeId operands[3] = {node.a, node.b, node.c};
        for (std::size_t k = 0; k < 3; ++k) {
            if (operands[k] == kNoNode) continue;
            instruction.operands[k] = sources[index(operands[k])];
            if (instruction.operands[k].place == Place::Uniform) uniform |= std::size_t{1} << k;
        }
        // A register whose last reader this is can take the result.
        for (const NodeId operand : operands) {
            if (operand == kNoNode || sources[index(operand)].place != Place::Register) continue;
            if (--uses[index(operand)] == 0) {
                free_registers.push_back(sources[index(operand)].index);
            }
        }
        if (free_registers.empty()) {
            if (registers_ == kMostRegisters) return false;
            free_registers.push_back(static_cast<std::uint16_t>(registers_++));
        }
        instruction.target = free_registers.back();
        free_registers.pop_back();
        instruction.kernel = FindKernel(kernels, node, uniform);
        instruction.extra = ExtraOf(node);
        instruction.last = i == index(graph.root);
        sources[i] = {Place::Register, instruction.target};
        code_.push_back(instruction);
    }
    root_ = sources[index(graph.root)];
    uniform_values_.resize(uniform_nodes_.size());
    fits_ = true;
    return true;
}

void BlockCode::BeginPass(ScalarCode& scalar)
{
    scalar.BeginPass();
    for (std::size_t i = 0; i < uniform_nodes_.size(); ++i) {
        EvalState state;
        uniform_values_[i] = scalar.Run(uniform_nodes_[i], state);
    }
}

void BlockCode::Run(std::span<const double> arguments, std::span<double> results,
                    std::vector<double>& scratch)
{
    const std::size_t n = arguments.size();
    if (root_.place == Place::Uniform) {
        std::fill(results.begin(), results.end(), uniform_values_[root_.index]);
        return;
    }
    if (root_.place == Place::Input) {
        std::memmove(results.data(), arguments.data(), n * sizeof(double));
        return;
    }
    // One register more than the code uses takes a padded copy of the arguments.
    double* const registers = AlignedRegisters(scratch, registers_ + 1);
    const double* input = arguments.data();
    const bool padded = n % kKernelStep != 0;
    if (padded) {
        double* const copy = registers + registers_ * kRegisterStride;
        std::memcpy(copy, input, n * sizeof(double));
        std::fill(copy + n, copy + Rounded(n), arguments[n - 1]);
        input = copy;
    }
    const auto resolve = [&](Source source) -> const double* {
        switch (source.place) {
            case Place::Input: return input;
            case Place::Register: return registers + source.index * kRegisterStride;
            case Place::Uniform: return uniform_values_.data() + source.index;
            default: return nullptr;
        }
    };
    for (const Instruction& instruction : code_) {
        double* target = registers + instruction.target * kRegisterStride;
        if (instruction.last && !padded) target = results.data();
        instruction.kernel(target, resolve(instruction.operands[0]),
                           resolve(instruction.operands[1]), resolve(instruction.operands[2]),
                           Rounded(n), instruction.extra);
    }
    if (padded) std::memcpy(results.data(), resolve(root_), n * sizeof(double));
}

}  // namespace korvinth::term
