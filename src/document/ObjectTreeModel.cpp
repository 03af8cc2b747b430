#include "ObjectTreeModel.h"

#include "NodeKey.h"
#include "clsKorviInterface.h"

#include <algorithm>

namespace {

const QByteArray kHeadersText = QByteArrayLiteral("HEADERS");

bool isShownInLayersOnly(const clsElement &block)
{
    const QByteArray type = block.ElementType();
    return type == "LAYER" || type == "STATE";
}

} // namespace

ObjectTreeModel::ObjectTreeModel(clsKorviInterface &document, QObject *parent)
    : QAbstractItemModel(parent)
    , mDocument(document)
    , mRoot(std::make_unique<ObjectTreeNode>())
{
    mRoot->childrenMade = true;
}

ObjectTreeModel::~ObjectTreeModel() = default;

void ObjectTreeModel::clear()
{
    beginResetModel();
    mRoot = std::make_unique<ObjectTreeNode>();
    mRoot->childrenMade = true;
    endResetModel();
}

void ObjectTreeModel::BuildObjectTree(bool layersOnly)
{
    beginResetModel();
    mRoot = std::make_unique<ObjectTreeNode>();
    mRoot->childrenMade = true;
    auto &top = mRoot->children;
    if (!layersOnly) {
        if (!mDocument.Headers().isEmpty()) {
            auto headers = std::make_unique<ObjectTreeNode>();
            headers->kind = ObjectTreeNode::Headers;
            headers->parent = mRoot.get();
            headers->segment = kHeadersText;
            // Header variables carry no letter: their keys are their own keys.
            headers->childrenMade = true;
            for (clsElement *header : mDocument.Headers()) {
                auto node = elementNode(headers.get(), header, 0);
                node->row = int(headers->children.size());
                headers->children.push_back(std::move(node));
            }
            top.push_back(std::move(headers));
        }
        // Templates read from the skin's shared files are not the user's to edit
        // here, so they get no nodes.
        for (clsElement *tpl : mDocument.Templates()) {
            if (!tpl->IsImported)
                top.push_back(elementNode(mRoot.get(), tpl, 'T'));
        }
    }
    top.reserve(top.size() + size_t(mDocument.Layers().Count()));
    for (clsElement *block : mDocument.Layers()) {
        if (layersOnly && !isShownInLayersOnly(*block))
            continue;
        top.push_back(elementNode(mRoot.get(), block, NodeKey::blockLetter(*block)));
    }
    mRoot->renumberChildren(0);
    endResetModel();
}

std::unique_ptr<ObjectTreeNode> ObjectTreeModel::elementNode(ObjectTreeNode *parent,
                                                             clsElement *element, char letter)
{
    auto node = std::make_unique<ObjectTreeNode>();
    node->kind = ObjectTreeNode::Element;
    node->parent = parent;
    node->element = element;
    node->segment = letter ? letter + element->ElementKey() : element->ElementKey();
    return node;
}

std::unique_ptr<ObjectTreeNode> ObjectTreeModel::propertyNode(ObjectTreeNode *parent,
                                                              const QByteArray &key)
{
    auto node = std::make_unique<ObjectTreeNode>();
    node->kind = ObjectTreeNode::Property;
    node->parent = parent;
    node->element = parent->element;
    node->segment = 'P' + key;
    node->childrenMade = true;
    return node;
}

// Properties first, then the child elements, both in document order.
void ObjectTreeModel::makeChildren(ObjectTreeNode *node) const
{
    if (node->childrenMade)
        return;
    node->childrenMade = true;
    if (node->kind != ObjectTreeNode::Element || !node->element)
        return;
    const clsProperties &props = node->element->Properties();
    const int children = node->element->subElementCount();
    node->children.reserve(size_t(props.Count() + children));
    for (int i = 0; i < props.Count(); ++i)
        node->children.push_back(propertyNode(node, props.keyAt(i).toByteArray()));
    if (children > 0) {
        for (clsElement *child : node->element->SubElements())
            node->children.push_back(elementNode(node, child, NodeKey::childLetter(*child)));
    }
    node->renumberChildren(0);
}

// A node about to get a new child that nobody has unfolded yet: its children are
// made now from the document, which already holds the new entry; that one is
// left out, so that it is added in view of everybody.
void ObjectTreeModel::makeChildrenWithout(ObjectTreeNode *node,
                                          const std::function<bool(const ObjectTreeNode &)> &isNew) const
{
    if (node->childrenMade)
        return;
    makeChildren(node);
    auto &children = node->children;
    for (auto it = children.rbegin(); it != children.rend(); ++it) {
        if (isNew(**it)) {
            children.erase(std::next(it).base());
            break;
        }
    }
    node->renumberChildren(0);
}

QModelIndex ObjectTreeModel::AddElementNode(clsElement *element, const QModelIndex &parent,
                                            const QByteArray &prefix)
{
    ObjectTreeNode *owner = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!owner || !element)
        return {};
    makeChildrenWithout(owner, [element](const ObjectTreeNode &n) { return n.element == element; });
    const int row = int(owner->children.size());
    beginInsertRows(parent, row, row);
    auto node = elementNode(owner, element, 0);
    // The prefix ends with the letter; the parent's own key comes before it.
    const int bar = prefix.lastIndexOf(NodeKey::Separator);
    node->segment = prefix.mid(bar + 1) + element->ElementKey();
    node->row = row;
    owner->children.push_back(std::move(node));
    endInsertRows();
    return index(row, 0, parent);
}

QModelIndex ObjectTreeModel::AddPropertyNode(const QModelIndex &owner, const QByteArray &propertyKey)
{
    ObjectTreeNode *node = nodeOf(owner);
    if (!node || node->kind != ObjectTreeNode::Element)
        return {};
    const QByteArray segment = 'P' + propertyKey;
    makeChildrenWithout(node, [&segment](const ObjectTreeNode &n) { return n.segment == segment; });
    const int row = int(node->children.size());
    beginInsertRows(owner, row, row);
    auto child = propertyNode(node, propertyKey);
    child->row = row;
    node->children.push_back(std::move(child));
    endInsertRows();
    return index(row, 0, owner);
}

QModelIndex ObjectTreeModel::InsertElementNode(clsElement *element, const QModelIndex &parent, int row,
                                               char letter)
{
    ObjectTreeNode *owner = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!owner || !element)
        return {};
    makeChildrenWithout(owner, [element](const ObjectTreeNode &n) { return n.element == element; });
    row = std::clamp(row, 0, int(owner->children.size()));
    beginInsertRows(parent, row, row);
    owner->children.insert(owner->children.begin() + row, elementNode(owner, element, letter));
    owner->renumberChildren(row);
    endInsertRows();
    return index(row, 0, parent);
}

QModelIndex ObjectTreeModel::InsertPropertyNode(const QModelIndex &owner, int row,
                                                const QByteArray &propertyKey)
{
    ObjectTreeNode *node = nodeOf(owner);
    if (!node || node->kind != ObjectTreeNode::Element)
        return {};
    const QByteArray segment = 'P' + propertyKey;
    makeChildrenWithout(node, [&segment](const ObjectTreeNode &n) { return n.segment == segment; });
    row = std::clamp(row, 0, int(node->children.size()));
    beginInsertRows(owner, row, row);
    node->children.insert(node->children.begin() + row, propertyNode(node, propertyKey));
    node->renumberChildren(row);
    endInsertRows();
    return index(row, 0, owner);
}

void ObjectTreeModel::RemoveNode(const QModelIndex &index)
{
    ObjectTreeNode *node = nodeOf(index);
    if (!node)
        return;
    ObjectTreeNode *owner = node->parent;
    const int row = node->row;
    beginRemoveRows(index.parent(), row, row);
    owner->children.erase(owner->children.begin() + row);
    owner->renumberChildren(row);
    endRemoveRows();
}

void ObjectTreeModel::RefreshNodeText(const QModelIndex &index)
{
    if (index.isValid())
        emit dataChanged(index, index, { Qt::DisplayRole });
}

NodeTarget ObjectTreeModel::ResolveNodeKey(const QByteArray &key) const
{
    return NodeKey::ResolveNodeKey(mDocument, key);
}

NodeTarget ObjectTreeModel::resolve(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    if (!node || node->kind == ObjectTreeNode::Headers)
        return {};
    const QByteArray key = keyOf(node);
    if (node->underHeaders())
        return NodeKey::ResolveHeaderNodeKey(mDocument, key);
    return NodeKey::ResolveNodeKey(mDocument, key);
}

QByteArray ObjectTreeModel::keyOf(const ObjectTreeNode *node)
{
    QByteArray key = node->segment;
    for (const ObjectTreeNode *n = node->parent; n && n->kind != ObjectTreeNode::Root; n = n->parent) {
        // The "HEADERS" node gives its children no part of its own.
        if (n->kind == ObjectTreeNode::Headers)
            break;
        key = n->segment + NodeKey::Separator + key;
    }
    return key;
}

QByteArray ObjectTreeModel::nodeKey(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    return node ? keyOf(node) : QByteArray();
}

QString ObjectTreeModel::nodeText(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    if (!node)
        return {};
    switch (node->kind) {
    case ObjectTreeNode::Headers:
        return QString::fromLatin1(kHeadersText);
    case ObjectTreeNode::Element:
        return node->element ? NodeKey::elementText(*node->element) : QString();
    case ObjectTreeNode::Property: {
        if (!node->element)
            return {};
        const clsProperty property = node->element->Properties().Find(node->segment.mid(1));
        return property ? NodeKey::propertyText(property) : QString();
    }
    case ObjectTreeNode::Root:
        break;
    }
    return {};
}

ObjectTreeNode::Kind ObjectTreeModel::nodeKind(const QModelIndex &index) const
{
    const ObjectTreeNode *node = nodeOf(index);
    return node ? node->kind : ObjectTreeNode::Root;
}

QModelIndex ObjectTreeModel::childWithSegment(const QModelIndex &parent, QByteArrayView segment) const
{
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return {};
    makeChildren(node);
    for (const auto &child : node->children) {
        if (child->segment == segment)
            return createIndex(child->row, 0, child.get());
    }
    return {};
}

QModelIndex ObjectTreeModel::indexOfKey(const QByteArray &key) const
{
    const QList<QByteArray> segments = key.split(NodeKey::Separator);
    if (key.isEmpty())
        return {};
    QModelIndex at = childWithSegment(QModelIndex(), segments.first());
    if (!at.isValid()) {
        const QModelIndex headers = childWithSegment(QModelIndex(), kHeadersText);
        if (headers.isValid())
            at = childWithSegment(headers, segments.first());
    }
    for (int i = 1; i < segments.size() && at.isValid(); ++i)
        at = childWithSegment(at, segments.at(i));
    return at;
}

QModelIndex ObjectTreeModel::indexOfElement(const clsElement *element, const QModelIndex &parent) const
{
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node || !element)
        return {};
    makeChildren(node);
    for (const auto &child : node->children) {
        if (child->kind == ObjectTreeNode::Element && child->element == element)
            return createIndex(child->row, 0, child.get());
    }
    return {};
}

ObjectTreeNode *ObjectTreeModel::nodeOf(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return static_cast<ObjectTreeNode *>(index.internalPointer());
}

QModelIndex ObjectTreeModel::indexOfNode(const ObjectTreeNode *node) const
{
    if (!node || node == mRoot.get() || !node->parent)
        return {};
    return createIndex(node->row, 0, const_cast<ObjectTreeNode *>(node));
}

QModelIndex ObjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (column != 0 || row < 0)
        return {};
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return {};
    makeChildren(node);
    if (row >= int(node->children.size()))
        return {};
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex ObjectTreeModel::parent(const QModelIndex &child) const
{
    const ObjectTreeNode *node = nodeOf(child);
    if (!node)
        return {};
    return indexOfNode(node->parent);
}

int ObjectTreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return 0;
    makeChildren(node);
    return int(node->children.size());
}

int ObjectTreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

// Answered without making the children, so unfolded nodes cost nothing.
bool ObjectTreeModel::hasChildren(const QModelIndex &parent) const
{
    const ObjectTreeNode *node = parent.isValid() ? nodeOf(parent) : mRoot.get();
    if (!node)
        return false;
    if (node->childrenMade)
        return !node->children.empty();
    return node->element
        && (node->element->Properties().Count() > 0 || node->element->subElementCount() > 0);
}

QVariant ObjectTreeModel::data(const QModelIndex &index, int role) const
{
    if (!nodeOf(index))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return nodeText(index);
    case NodeKeyRole:
        return nodeKey(index);
    case NodeKindRole:
        return int(nodeKind(index));
    default:
        return {};
    }
}
