// Several trees are open only while several hosts write at once, or when lines are missing.
#include "jighost/log/OperationTrees.h"

#include <algorithm>

#include "frame/Result.h"
#include "jighost/operations/LogName.h"
#include "jighost/operations/OperationTable.h"

static const std::size_t MAX_TEXT = 500;
/// Operations that wait for others. The module's deepest run has less than ten.
static const std::size_t MAX_WAITING = 1000;
/// Hosts that write at once, and operations whose hosts are gone.
static const std::size_t MAX_OPEN = 64;

bool LOGGED_OPERATION::HasFailed() const {
    return result ? IsFailure(*result) : !bInterleaved;
}

static void SetPrefix(std::string& target, std::string_view prefix) {
    while (prefix.ends_with(' ')) {
        prefix.remove_suffix(1);
    }
    target = prefix.substr(0, MAX_TEXT);
}

static void AddText(std::string& target, std::string_view text) {
    if (text.empty()) {
        return;
    }
    target += target.empty() ? "" : "; ";
    target += text;
    if (target.size() > MAX_TEXT) {
        target.resize(MAX_TEXT);
        target += "...";
    }
}

// --- Opening ---

bool OperationTrees::IsIdle() const {
    return std::all_of(m_Open.begin(), m_Open.end(), [](const TREE* each) { return each->bLeft; });
}

// A name that is not known may be that of a routine within whatever runs.
OperationTrees::TREE* OperationTrees::FindOuter(std::string_view name) const {
    for (auto tree = m_Open.rbegin(); tree != m_Open.rend() && !(*tree)->bLeft; ++tree) {
        if (RunsWithin(name, (*tree)->operations[(*tree)->open.back()].name)) {
            return *tree;
        }
    }
    const bool bAny = !m_Open.empty() && !m_Open.back()->bLeft && !IsLogName(name);
    return bAny ? m_Open.back() : nullptr;
}

OperationTrees::TREE& OperationTrees::AddTree() {
    if (m_Spare.empty()) {
        m_Spare.push_back(&m_Memory.emplace_back());
    }
    TREE& tree = *m_Spare.back();
    m_Spare.pop_back();
    m_Trees.push_back(&tree);
    tree.count = 0;
    tree.open.clear();
    tree.bBeside = false;
    tree.bLeft = false;
    return tree;
}

LOGGED_OPERATION& OperationTrees::AddOperation(TREE& tree, const LOG_LINE& line) {
    if (tree.count == tree.operations.size()) {
        tree.operations.emplace_back();
    }
    LOGGED_OPERATION& operation = tree.operations[tree.count++];
    ++m_Count;
    operation.name = line.name;
    operation.depth = tree.open.size();
    SetPrefix(operation.begin, line.prefix);
    operation.end.clear();
    operation.error.clear();
    operation.result.reset();
    operation.bOpened = true;
    operation.bInterleaved = false;
    return operation;
}

void OperationTrees::Open(const LOG_LINE& line) {
    MakeRoom();
    TREE* pTree = FindOuter(line.name);
    if (pTree == nullptr) {
        pTree = &AddTree();
        m_Open.push_back(pTree);
    }
    AddOperation(*pTree, line);
    pTree->open.push_back(pTree->count - 1);
    MarkOthersBeside(*pTree);
}

void OperationTrees::PassStart() {
    for (TREE* pTree : m_Open) {
        pTree->bLeft = !pTree->bBeside;
    }
}

void OperationTrees::MarkOthersBeside(const TREE& tree) {
    for (TREE* pOther : m_Open) {
        pOther->bBeside = pOther->bBeside || (pOther != &tree && !pOther->bLeft);
    }
}

// --- Closing ---

// One that nothing runs within goes first: an outer one has no closing line ahead of its inner
// ones.
OperationTrees::PLACE OperationTrees::Find(std::string_view name) const {
    PLACE outer = {nullptr, 0};
    for (auto tree = m_Open.rbegin(); tree != m_Open.rend(); ++tree) {
        const std::vector<std::size_t>& open = (*tree)->open;
        for (std::size_t i = open.size(); i-- > 0;) {
            if ((*tree)->operations[open[i]].name != name) {
                continue;
            }
            if (i + 1 == open.size()) {
                return {*tree, i};
            }
            if (outer.pTree == nullptr) {
                outer = {*tree, i};
            }
        }
    }
    return outer;
}

LOGGED_OPERATION& OperationTrees::OperationAt(const PLACE& place) {
    return place.pTree->operations[place.pTree->open[place.position]];
}

bool OperationTrees::IsOpen(std::string_view name) const {
    return Find(name).pTree != nullptr;
}

void OperationTrees::AddError(std::string_view error) {
    if (!m_Open.empty()) {
        AddText(OperationAt({m_Open.back(), m_Open.back()->open.size() - 1}).error, error);
    }
}

void OperationTrees::AddEarlyError(std::string_view error, std::string_view name) {
    for (auto tree = m_Open.rbegin(); tree != m_Open.rend(); ++tree) {
        LOGGED_OPERATION& operation = OperationAt({*tree, (*tree)->open.size() - 1});
        if (operation.name == name && operation.error.empty()) {
            operation.error = error;
            return;
        }
    }
}

/// If several hosts are within operations of this name, the line may be that of any of them.
void OperationTrees::MarkOfOneName(std::string_view name) {
    std::vector<LOGGED_OPERATION*> named;
    for (TREE* pTree : m_Open) {
        for (const std::size_t place : pTree->open) {
            if (!pTree->bLeft && pTree->operations[place].name == name) {
                named.push_back(&pTree->operations[place]);
            }
        }
    }
    for (LOGGED_OPERATION* pOperation : named) {
        pOperation->bInterleaved = pOperation->bInterleaved || named.size() > 1;
    }
}

// An operation within that is still open passes an exception on, without a closing line; or, as one
// that hosts call too, it is another host's.
void OperationTrees::CloseAt(TREE& tree, std::size_t position) {
    const auto closed = tree.open.begin() + static_cast<std::ptrdiff_t>(position);
    const auto isOver = [&](std::size_t within) {
        return FindOperation(tree.operations[within].name) == nullptr;
    };
    tree.open.erase(std::remove_if(closed + 1, tree.open.end(), isOver), tree.open.end());
    tree.open.erase(closed);
    if (tree.open.empty()) {
        m_bSeveral = m_bSeveral || tree.bBeside;
        Leave(tree);
        HandOverFirst();
    }
}

static void SetClosing(LOGGED_OPERATION& operation, const LOG_LINE& line, std::string_view error) {
    operation.result = line.result;
    SetPrefix(operation.end, line.prefix);
    AddText(operation.error, error);
}

bool OperationTrees::Close(const LOG_LINE& line, std::string_view error) {
    const PLACE place = Find(line.name);
    if (place.pTree == nullptr) {
        return IsLogName(line.name) && AddWithoutOpening(line, error);
    }
    if (m_Open.size() > 1) {
        MarkOthersBeside(*place.pTree);
        MarkOfOneName(line.name);
    }
    SetClosing(OperationAt(place), line, error);
    CloseAt(*place.pTree, place.position);
    return true;
}

bool OperationTrees::AddWithoutOpening(const LOG_LINE& line, std::string_view error) {
    MakeRoom();
    LOGGED_OPERATION& operation = AddOperation(AddTree(), line);
    operation.begin.clear();
    operation.bOpened = false;
    SetClosing(operation, line, error);
    HandOverFirst();
    return true;
}

// --- Handing over ---

void OperationTrees::Leave(const TREE& tree) {
    m_Open.erase(std::find(m_Open.begin(), m_Open.end(), &tree));
}

void OperationTrees::GiveUp(TREE& tree) {
    for (std::size_t i = 0; i < tree.count; ++i) {
        LOGGED_OPERATION& operation = tree.operations[i];
        operation.bInterleaved =
            operation.result ? operation.bInterleaved : tree.bBeside && m_bSeveral;
    }
    tree.open.clear();
    Leave(tree);
}

void OperationTrees::HandOver(TREE& tree) {
    m_Sink({tree.operations.data(), tree.count});
    m_Count -= tree.count;
    m_Spare.push_back(&tree);
}

void OperationTrees::HandOverFirst() {
    const auto isOpen = [](const TREE* each) { return !each->open.empty(); };
    const auto end = std::find_if(m_Trees.begin(), m_Trees.end(), isOpen);
    std::for_each(m_Trees.begin(), end, [this](TREE* each) { HandOver(*each); });
    m_Trees.erase(m_Trees.begin(), end);
}

void OperationTrees::HandOverEnded() {
    const auto isOpen = [](const TREE* each) { return !each->open.empty(); };
    const auto ended = std::stable_partition(m_Trees.begin(), m_Trees.end(), isOpen);
    std::for_each(ended, m_Trees.end(), [this](TREE* each) { HandOver(*each); });
    m_Trees.erase(ended, m_Trees.end());
}

void OperationTrees::MakeRoom() {
    if (m_Count >= MAX_WAITING) {
        HandOverEnded();
    }
    if (m_Count >= MAX_WAITING || m_Open.size() >= MAX_OPEN) {
        GiveUp(*m_Open.front());
        HandOverFirst();
    }
}

void OperationTrees::End() {
    while (!m_Open.empty()) {
        GiveUp(*m_Open.front());
    }
    HandOverFirst();
}
