#include "keyorder.h"

#include "numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr int kNone = -1;

/// A name among others: as a text to all texts, as a number to numbers.
struct Name
{
    explicit Name(const QString &itself) : text(&itself), isNumber(IsNumeric(itself))
    {
        if (isNumber)
            number = LeadingNumber(itself);
    }

    const QString *text;
    bool isNumber;
    double number = 0;
};

/// What of some names comes last: of the numbers, of the other texts, of all.
struct Highest
{
    explicit Highest(const Name &name)
        : whole(name.isNumber ? std::nearbyint(name.number) : -std::numeric_limits<double>::infinity()),
          other(name.isNumber ? nullptr : name.text),
          any(name.text)
    {
    }

    void Take(const Highest &more)
    {
        whole = std::max(whole, more.whole);
        other = Later(other, more.other);
        any = Later(any, more.any);
    }
    static const QString *Later(const QString *left, const QString *right)
    {
        return !left || (right && *right > *left) ? right : left;
    }

    /// Whether one of them has the name come before it.
    bool IsBehind(const Name &name) const
    {
        if (!name.isNumber)
            return *any > *name.text;
        return whole > name.number || (other && *other > *name.text);
    }

    double whole;
    const QString *other;
    const QString *any;
};

/// A tree of names in their order, kept shallow by random priorities. Each node knows what comes last below it, which
/// leads to the first that a name comes before.
class KeyTree
{
public:
    void Reserve(size_t size) { m_nodes.reserve(size); }
    void Add(const QString &name)
    {
        m_nodes.emplace_back(name, m_random());
        m_root = Insert(m_root, static_cast<int>(m_nodes.size()) - 1);
    }
    void AppendOrder(std::vector<int> &order) const { AppendOrder(m_root, order); }

private:
    struct Node
    {
        Node(const QString &itself, std::minstd_rand::result_type itsPriority)
            : name(itself),
              own(name),
              below(own),
              priority(itsPriority)
        {
        }

        Name name;
        Highest own;
        Highest below; ///< its own included
        std::minstd_rand::result_type priority;
        int left = kNone;
        int right = kNone;
    };

    Node &At(int node) { return m_nodes[static_cast<size_t>(node)]; }
    const Node &At(int node) const { return m_nodes[static_cast<size_t>(node)]; }

    int Insert(int root, int added);
    int RaiseChild(int root, int Node::*side, int Node::*otherSide);
    void TakeBelow(int node);
    void AppendOrder(int root, std::vector<int> &order) const;

    std::vector<Node> m_nodes;
    std::minstd_rand m_random;
    int m_root = kNone;
};

int KeyTree::Insert(int root, int added)
{
    if (root == kNone)
        return added;
    Node &node = At(root);
    const Name &name = At(added).name;
    const bool goesLeft = node.own.IsBehind(name) || (node.left != kNone && At(node.left).below.IsBehind(name));
    int Node::*const side = goesLeft ? &Node::left : &Node::right;
    node.*side = Insert(node.*side, added);
    if (At(node.*side).priority > node.priority)
        return RaiseChild(root, side, goesLeft ? &Node::right : &Node::left);
    node.below.Take(At(added).own);
    return root;
}

int KeyTree::RaiseChild(int root, int Node::*side, int Node::*otherSide)
{
    const int child = At(root).*side;
    At(root).*side = At(child).*otherSide;
    At(child).*otherSide = root;
    TakeBelow(root);
    TakeBelow(child);
    return child;
}

void KeyTree::TakeBelow(int node)
{
    Node &root = At(node);
    root.below = root.own;
    for (const int child : {root.left, root.right}) {
        if (child != kNone)
            root.below.Take(At(child).below);
    }
}

void KeyTree::AppendOrder(int root, std::vector<int> &order) const
{
    if (root == kNone)
        return;
    AppendOrder(At(root).left, order);
    order.push_back(root);
    AppendOrder(At(root).right, order);
}

} // namespace

bool ComesBefore(const QString &newName, const QString &existing)
{
    return Highest(Name(existing)).IsBehind(Name(newName));
}

std::vector<int> KeyOrder(const std::vector<const QString *> &names)
{
    KeyTree tree;
    tree.Reserve(names.size());
    for (const QString *name : names)
        tree.Add(*name);
    std::vector<int> order;
    order.reserve(names.size());
    tree.AppendOrder(order);
    return order;
}
