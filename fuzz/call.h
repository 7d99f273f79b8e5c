// One call of an export with invented arguments: every buffer exactly as large as the manual promises it to be.
#pragma once

#include "calls.h"
#include "draw.h"

#include <map>
#include <memory>
#include <string>

namespace abuse
{
/// What numbers the host passes: those that the manual calls sensible, any, or those beside which results are rounded
/// another way, drawn by the types of the parameters alone.
enum class Numbers { sensible, any, edges };

/// Numbers that are not left to the draw, by the places of their parameters. What must fit each other is still made to.
using Fixed = std::map<size_t, Value>;

/// What a buffer is filled with. Numbers are floats or integers, by the type of the parameter.
enum class Content { noise, twoLevels, numbers, levels, levelsRecord, places, zeros, cube, grid, outline };

struct Buffer
{
    int64_t elements;
    Content content;
};

class Call
{
public:
    /// The same draw gives the same call, whatever table it is from.
    Call(const Export& callee, const Draw& draw, Numbers numbers, support::Place place = support::Place::end,
         const Fixed& fixed = {});

    double run() { return run(callee_); }
    double run(const Export& callee) { return callee.call(values_.data()); }

    /// Of all that the host can see afterwards. All not-a-numbers count as one.
    uint64_t checksum(double result) const;
    /// Of what the callee may not write.
    uint64_t checksumOfSources() const;
    bool guardsAreIntact() const;
    std::string describe() const;

    const std::vector<Value>& values() const { return values_; }
    support::Guarded* buffer(size_t parameter) { return buffers_[parameter].get(); }
    const Export& callee() const { return callee_; }

    /// The value of a parameter that is a whole number, or 0.
    int64_t whole(std::string_view name) const;
    bool has(std::string_view name) const { return find(name) != nullptr; }
    /// The pixels of the call's pictures, and the cells of its maps.
    int64_t pixels() const;
    /// Of all buffers together; of one that is passed twice, twice.
    size_t bytes() const;

private:
    Value* find(std::string_view name);
    const Value* find(std::string_view name) const { return const_cast<Call*>(this)->find(name); }
    void set(std::string_view name, int64_t value);
    /// What the number of a parameter, or what its buffer holds, is drawn from.
    Draw& drawFor(std::string_view name);
    void drawArguments(const Fixed& fixed);
    void drawScalars();
    int64_t drawSize(Draw& draw) const;
    bool isTooLarge() const;
    void bindSizes();
    void bindMap();
    void drawRectangle();
    void drawDab();
    uint32_t placesFor(const Parameter& parameter) const;
    void fill(support::Guarded& memory, const Parameter& parameter, Content content, uint64_t seed);
    static void fillWithEdges(support::Guarded& memory, const Parameter& parameter, uint64_t seed);
    void makeOutline();
    void workInPlace();
    size_t ownerOf(size_t parameter) const;
    double drawReal(Draw& draw, const Parameter& parameter, uint32_t kind) const;

    const Export& callee_;
    Numbers numbers_;
    // One for each parameter, by its place alone: how a rule draws moves no other parameter, and names move nothing. The
    // last is for what no argument says.
    std::vector<Draw> draws_;
    std::vector<Value> values_;
    std::vector<std::unique_ptr<support::Guarded>> buffers_;
    // How high the picture under a dab is, which no argument says.
    int64_t rowsUnderDab_ = 0;
    // What the outline to walk is made from.
    std::vector<int32_t> records_;
    std::vector<int32_t> map_;
};

/// How large a buffer is promised to be; elements below 0 where nobody has said so.
Buffer promised(const Call& call, const Parameter& parameter);

/// The parameter that may be the same buffer as this one, which is only read; no name where the manual allows none.
std::string_view mayBe(const Export& callee, std::string_view parameter);

/// Exports whose output is too large for more than a few calls.
bool isHeavy(const Export& callee);
} // namespace abuse
