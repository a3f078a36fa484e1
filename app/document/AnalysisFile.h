#pragma once

#include "app/document/Scenario.h"

#include <QByteArray>

#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// The analysis file (.qva) and the undo snapshots, which hold the same text.
//
//   <QuorvaneAnalysis version="1.20204997">
//   	<selectedScenario>0</selectedScenario>
//   	<Scenarios>
//   		<Scenario name="Flop c-bet">
//   			<Player1> a range leaf of the range tree file, with its groups </Player1>
//   			<Player2> ... </Player2>
//   			<Board>Ah7d2c</Board>
//   			<Deadcards></Deadcards>
//   			<EV_FE_Lines> one Line element per line </EV_FE_Lines>
//   		</Scenario>
//   	</Scenarios>
//   	<EV_FE_Wrapper> the EV_FE_Tab element of the EV/FE page </EV_FE_Wrapper>
//   </QuorvaneAnalysis>
//
// No XML declaration, printed with RapidXML's default flags (indented with tabs), the bytes of
// names and texts as they are. Files written before the XML form are a text form that is
// only read (see readLegacy).
//
// Reading never ends the program and never half-reads: anything that makes a file unreadable
// throws AnalysisFileError with a reason for the user, and the caller's analysis stays as it
// was, since the content is only handed out whole. Lines of the EV/FE page that cannot be
// read are skipped and named in `problems` (and on standard error), as the line reader does.
class AnalysisFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a file holds.
struct AnalysisContent {
    std::vector<Scenario> scenarios;
    // The scenario shown when the file was written; -1 when the file does not say (a legacy
    // file), which shows the last scenario.
    int selectedScenario = -1;
    // The EV/FE page's state, the `EV_FE_Tab` element as text; empty when the file has none.
    std::string tabState;
    // Lines that had to be skipped, for a message.
    std::vector<std::string> problems;
    // For a snapshot: the compressed texts of the scenarios, shared with the undo list.
    std::vector<std::shared_ptr<const QByteArray>> snapshotParts;
};

namespace AnalysisFile {

// The text of one scenario as it stands in a file (the `Scenario` element, two levels
// down), and a file put together from such texts: write() is assemble() of the scenarios'
// texts, so an undo snapshot can keep the texts of unchanged scenarios instead of writing
// them again.
std::string scenarioText(const Scenario& scenario);
std::string assemble(const std::vector<std::string>& scenarioTexts, int selectedScenario,
                     const std::string& tabState);
// One scenario back from its text. Throws AnalysisFileError.
Scenario readScenarioText(const std::string& text, std::vector<std::string>& problems);

// The file text of an analysis.
std::string write(const std::vector<Scenario>& scenarios, int selectedScenario,
                  const std::string& tabState);
void write(std::ostream& stream, const std::vector<Scenario>& scenarios, int selectedScenario,
           const std::string& tabState);

// Reads either form: text whose first character other than white space is '<' is the XML
// form, anything else the legacy form. Throws AnalysisFileError.
AnalysisContent read(std::istream& stream);
AnalysisContent read(const std::string& text);

// The two forms on their own.
AnalysisContent readXml(const std::string& text);
AnalysisContent readLegacy(const std::string& text);

} // namespace AnalysisFile
