#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

// The range tree file: XML printed and parsed with RapidXML, used for exported files
// (.qvt), the hand selection settings, and text mementos for undo and drag and drop.
//
//   <QuorvaneTree version="1.20204997">
//   	<folder name="Preflop">
//   		<range name="Value" text="TT+,AQs+" usesColor="true" colorFrom="252,112,91"
//   		       colorTo="232,112,101" exclusive="true" insertMode="overwrite"/>
//
// (one line per element in the file). `folder` has the attribute `name`; `range` has, in
// this order, `name`, `text` (compact range text), `usesColor`, `colorFrom` and `colorTo`
// (only with usesColor "true"; "r,g,b"), `exclusive`, and `insertMode` ("overwrite" or
// "block", only with exclusive "true"). Children nest in their parent's element in the
// order of `children`. No XML declaration; tabs indent. Bytes of names pass unchanged
// (UTF-8 in practice); the printer escapes `<`, `>`, `&` and quotes.
//
// Reading is lenient: the root's name and version are not looked at; a range's text is set
// as free text through the node's filter, so a range outside its parent is cut and among
// exclusive overwrite siblings the later one in the file wins. Errors:
//   Range::Exception::RangeSerializeError  "File to read is not existing or empty.",
//                                          "Node to overwrite is of other type (range/folder)
//                                          than read node.", and for files nested too deeply
//                                          "File is nested too deeply to be a range tree.";
//   rapidxml::parse_error                  malformed XML.
// Nodes added before an error stay in the tree.

namespace Range {

class Tree;

namespace TreeSerialization {

// Prints the node `index` with its descendants, or all nodes for 0xFFFFFFFF.
void write(std::ostream& stream, const Tree& tree, unsigned int index = 0xFFFFFFFF);
// Prints the listed nodes, each with its descendants, as the top-level elements in list order
// (the children of a folder that stands for the whole file, say).
void writeNodes(std::ostream& stream, const Tree& tree, const std::vector<unsigned int>& nodes);
// Adds every top-level element of the stream to the tree at top level.
void readAll(std::istream& stream, Tree& tree);
// Adds every top-level element below the node `index`, the first at `position` among its
// children and the others behind it in file order (or all at the end).
void readInto(std::istream& stream, Tree& tree, unsigned int index, unsigned int position);
// Overwrites the node `index` from the first top-level element (a folder its name; a range
// its name, colour and text, keeping its exclusive flag and insert mode) and adds that
// element's children below it.
void readOver(std::istream& stream, Tree& tree, unsigned int index);
// The `name` and `text` attributes of every element that is no folder, in document order,
// so that an import can look at the texts before it changes a tree. Throws what reading
// throws.
std::vector<std::pair<std::string, std::string>> rangeTexts(std::istream& stream);

// The stream form of a player's tree in analysis files of earlier versions: the whole
// range's technical text, a zero byte, the number N of groups as text and one separator
// character, then per group its name, a zero byte, its technical text, a zero byte, a
// parent number as text and one separator character. The tree is cleared first and rebuilt
// as a top-level "Full Range" with N exclusive block groups below it (colours picked, so
// more than 16 groups end in "All colors in use."). A group whose parent number is not
// 0xFFFFFFFF gets its own index as parent, as earlier versions did. A stream that ends
// early throws RangeSerializeError "Old tree stream ended early.".
void readOldStream(std::istream& stream, Tree& tree);

} // namespace TreeSerialization
} // namespace Range
