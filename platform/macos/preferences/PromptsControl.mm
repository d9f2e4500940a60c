#import "platform/macos/preferences/Control.h"

#import <objc/runtime.h>

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Layout.h"

namespace {

constexpr CGFloat listWidth = 360;
constexpr CGFloat listHeight = 120;
constexpr CGFloat spacing = 4;

NSString* const columnName = @"prompt";

} // namespace

@implementation KelpaPromptsControl {
    NSArray<NSString*>* _prompts;
    NSTableView* _table;
    NSTextField* _newPrompt;
    NSButton* _edit;
    NSString* _editName;
    NSString* _cancelName;
    NSInteger _editedRow;
    BOOL _cancelled;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    const kelpa::PromptListButtons& buttons = form.layout.prompts;
    _prompts = @[];
    _editedRow = -1;
    _editName = kelpa::toNSString(buttons.edit.name);
    _cancelName = kelpa::toNSString(buttons.cancel);
    NSStackView* column = [NSStackView stackViewWithViews:@[
        [self makeAddRow:buttons.add], [self makeList:kelpa::toNSString(control.label)],
        [self makeButtons:buttons]
    ]];
    return @[ kelpa::asColumn(column, NSLayoutAttributeLeading, spacing) ];
}

- (NSScrollView*)makeList:(NSString*)label {
    _table = [[NSTableView alloc] initWithFrame:NSZeroRect];
    NSTableColumn* column = [[NSTableColumn alloc] initWithIdentifier:columnName];
    [column setWidth:listWidth];
    [_table addTableColumn:column];
    [_table setHeaderView:nil];
    [_table setDataSource:self];
    [_table setDelegate:self];
    [_table setTarget:self];
    [_table setDoubleAction:@selector(editClicked:)];
    [_table setAccessibilityLabel:label];
    NSScrollView* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
    [scroll setDocumentView:_table];
    [scroll setHasVerticalScroller:YES];
    [scroll setBorderType:NSBezelBorder];
    kelpa::fixSize(scroll, {listWidth, listHeight});
    return scroll;
}

- (NSStackView*)makeAddRow:(const kelpa::SymbolButton&)add {
    _newPrompt = [NSTextField textFieldWithString:@""];
    [_newPrompt setTarget:self];
    [_newPrompt setAction:@selector(addClicked:)];
    [_newPrompt setAccessibilityLabel:kelpa::toNSString(add.name)];
    // Only Enter adds: a field that is merely left keeps what was typed.
    [[_newPrompt cell] setSendsActionOnEndEditing:NO];
    NSButton* plus = [self makeButton:add action:@selector(addClicked:)];
    [[[_newPrompt widthAnchor] constraintEqualToConstant:listWidth - listHeight / 3] setActive:YES];
    return [NSStackView stackViewWithViews:@[ _newPrompt, plus ]];
}

- (NSStackView*)makeButtons:(const kelpa::PromptListButtons&)buttons {
    _edit = [self makeButton:buttons.edit action:@selector(editClicked:)];
    return [NSStackView stackViewWithViews:@[
        _edit, [self makeButton:buttons.remove action:@selector(deleteClicked:)],
        [self makeButton:buttons.reset action:@selector(resetClicked:)]
    ]];
}

- (NSButton*)makeButton:(const kelpa::SymbolButton&)button action:(SEL)action {
    NSButton* made = [super makeButton:button action:action];
    [made setToolTip:kelpa::toNSString(button.name)];
    return made;
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
    NSMutableArray* all = [NSMutableArray arrayWithCapacity:entries.size()];
    for (const kelpa::PreferencesEntry& entry : entries)
        [all addObject:kelpa::toNSString(entry.text)];
    _prompts = all;
    [self endEditing];
    [_table reloadData];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView {
    return static_cast<NSInteger>([_prompts count]);
}

- (NSView*)tableView:(NSTableView*)tableView
    viewForTableColumn:(NSTableColumn*)tableColumn
                   row:(NSInteger)row {
    NSTextField* field = static_cast<NSTextField*>([tableView makeViewWithIdentifier:columnName owner:nil]);
    if (!field) {
        field = [NSTextField labelWithString:@""];
        [field setIdentifier:columnName];
        [field setLineBreakMode:NSLineBreakByTruncatingTail];
        [field setDelegate:self];
    }
    [field setStringValue:[_prompts objectAtIndex:static_cast<NSUInteger>(row)]];
    [field setEditable:row == _editedRow];
    return field;
}

- (NSString*)selectedPrompt {
    const NSInteger row = [_table selectedRow];
    return row < 0 ? nil : [_prompts objectAtIndex:static_cast<NSUInteger>(row)];
}

- (void)addClicked:(id)sender {
    NSString* text = [_newPrompt stringValue];
    [_newPrompt setStringValue:@""];
    [self did:kelpa::PreferencesAct::Added value:kelpa::toString(text)];
}

/// The same button begins to edit the chosen text and gives that up again.
- (void)editClicked:(id)sender {
    if (_editedRow >= 0)
        return [self cancelEditing];
    if (![self selectedPrompt])
        return;
    _editedRow = [_table selectedRow];
    _cancelled = NO;
    [self nameEditButton:_cancelName];
    [_table reloadData];
    [[_table window] makeFirstResponder:[_table viewAtColumn:0 row:_editedRow makeIfNecessary:YES]];
}

- (void)nameEditButton:(NSString*)name {
    [_edit setAccessibilityLabel:name];
    [_edit setToolTip:name];
}

- (void)cancelEditing {
    _cancelled = YES;
    [[_table window] makeFirstResponder:_table];
    [self endEditing];
    [_table reloadData];
}

- (void)endEditing {
    _editedRow = -1;
    [self nameEditButton:_editName];
}

/// Escape gives the changes up, as the button does.
- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)commandSelector {
    if (!sel_isEqual(commandSelector, @selector(cancelOperation:)))
        return NO;
    [self cancelEditing];
    return YES;
}

- (void)controlTextDidEndEditing:(NSNotification*)notification {
    NSTextField* field = static_cast<NSTextField*>([notification object]);
    if (_editedRow < 0 || _cancelled)
        return;
    NSString* old = [_prompts objectAtIndex:static_cast<NSUInteger>(_editedRow)];
    NSString* text = [field stringValue];
    [self endEditing];
    [_table reloadData];
    if (![text isEqualToString:old])
        [self did:kelpa::PreferencesAct::Edited
            value:kelpa::PreferencesEdit{kelpa::toString(old), kelpa::toString(text)}];
}

- (void)deleteClicked:(id)sender {
    if (NSString* prompt = [self selectedPrompt])
        [self did:kelpa::PreferencesAct::Removed value:kelpa::toString(prompt)];
}

- (void)resetClicked:(id)sender {
    [self did:kelpa::PreferencesAct::Reset value:kelpa::PreferencesValue()];
}

@end
