// Pipeline - blocks converted by several threads, in order.
#pragma once

#include <functional>
#include <vector>

#include "tables/BlockConverter.h"

namespace orvex::tool {

/// Takes the next block; false at the end.
using BlockSource = std::function<bool(Block&)>;
/// Gets the blocks and their results in the order of the blocks.
using BlockSink = std::function<void(const Block&, const BlockResult&)>;

/// Runs every block through one of the converters, as many at a time as there are converters; each holds one block, so
/// that memory stays bounded. What is thrown for a block comes out of here, after the blocks before it were written.
/// Source and sink are never called by two threads at once.
void RunPipeline(const BlockSource& source, std::vector<BlockConverter>& converters, const BlockSink& sink);

}  // namespace orvex::tool
