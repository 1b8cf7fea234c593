#pragma once

class XmlCursor;

/// Whether what stands behind "<!DOCTYPE" is a document type by XML's grammar; the place is then behind it. Nothing is
/// looked up or expanded: references to entities need not lead anywhere.
bool TakeDocumentType(XmlCursor &at);
