// Evaluates a graph for many values of one variable: linear code over registers of kBlockSize
// numbers, each instruction run by a kernel over a whole block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "term/error.h"
#include "term/graph.h"
#include "term/kernels.h"
#include "term/scalar_code.h"

namespace korvinth::term {

inline constexpr std::size_t kBlockSize = 512;

class BlockCode
{
public:
    void Clear();
    // Prepares the code for arguments of the variable with this cell. False when that would take
    // too many registers; then only the scalar code can evaluate the graph.
    bool Prepare(const Graph& graph, const double* variable, const KernelTable& kernels);

    // Computes what does not depend on the variable; before the Run calls of one evaluation.
    void BeginPass(ScalarCode& scalar);
    // Sets results[i] to the value at arguments[i], NaN where the term has none; at most
    // kBlockSize of them. `scratch` holds the registers and is enlarged as needed. The results may
    // take the place of the arguments.
    void Run(std::span<const double> arguments, std::span<double> results,
             std::vector<double>& scratch);
    // The error of a result that is kDomainError, when all operations that can fail share it and
    // are applied to what block and scalar code compute bit by bit alike; else None, and the scalar
    // code is to be asked.
    Error DomainError() const { return domain_error_; }

private:
    enum class Place : std::uint8_t { None, Input, Register, Uniform };
    struct Source
    {
        Place place = Place::None;
        std::uint16_t index = 0;
    };
    struct Instruction
    {
        Kernel kernel = nullptr;
        Source operands[3];
        std::uint16_t target = 0;
        bool last = false;
        KernelExtra extra{};
    };

    const double* variable_ = nullptr;
    bool prepared_ = false;
    bool fits_ = false;
    std::vector<Instruction> code_;
    std::vector<NodeId> uniform_nodes_;
    std::vector<double> uniform_values_;
    std::size_t registers_ = 0;
    Source root_;
    Error domain_error_ = Error::None;
};

}  // namespace korvinth::term
