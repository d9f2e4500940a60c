// The notification centre. What is shown and taken away is noted; a test presses.
#import "platform/macos/check/driver/Commands.h"
#import "platform/macos/check/standin/StandIns.h"

#import <UserNotifications/UserNotifications.h>

#include <cstdlib>

@implementation UNNotificationAction

+ (instancetype)actionWithIdentifier:(NSString*)identifier
                               title:(NSString*)title
                             options:(UNNotificationActionOptions)options {
    UNNotificationAction* action = [[self alloc] init];
    action->_identifier = identifier;
    action->_title = title;
    return action;
}

@end

@implementation UNNotificationCategory

+ (instancetype)categoryWithIdentifier:(NSString*)identifier
                               actions:(NSArray*)actions
                     intentIdentifiers:(NSArray*)intents
                               options:(UNNotificationCategoryOptions)options {
    UNNotificationCategory* category = [[self alloc] init];
    category->_identifier = identifier;
    category->_actions = actions;
    return category;
}

@end

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent
@end

@implementation UNNotificationRequest

+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* request = [[self alloc] init];
    request->_identifier = identifier;
    request->_content = content;
    return request;
}

@end

@interface UNNotification ()
@property(nonatomic, readwrite) UNNotificationRequest* request;
@end

@implementation UNNotification
@end

@interface UNNotificationResponse ()
@property(nonatomic, readwrite) UNNotification* notification;
@property(nonatomic, readwrite, copy) NSString* actionIdentifier;
@end

@implementation UNNotificationResponse
@end

namespace {

UNNotificationRequest* shown; ///< last, also when it has gone

} // namespace

@implementation UNUserNotificationCenter {
    UNNotificationCategory* _category;
}

+ (UNUserNotificationCenter*)currentNotificationCenter {
    static id center = [[self alloc] init];
    return center;
}

- (void)setNotificationCategories:(NSSet*)categories {
    _category = [categories anyObject];
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))done {
    done(std::getenv("KELPA_TEST_NO_NOTIFICATIONS") == nullptr, nil);
}

- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))done {
    const auto content = static_cast<UNMutableNotificationContent*>([request content]);
    NSMutableArray* actions = [NSMutableArray array];
    if ([[content categoryIdentifier] isEqual:[_category identifier]])
        for (UNNotificationAction* action in [_category actions])
            [actions addObject:@[ [action identifier], [action title] ]];
    note(@"notification", @{@"title" : [content title], @"body" : [content body], @"actions" : actions});
    shown = request;
    done(nil);
}

- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray*)identifiers {
}

- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray*)identifiers {
    if (shown && [identifiers containsObject:[shown identifier]])
        note(@"notification gone", @{});
}

@end

@implementation Driver (Notifications)

/// A press on the notification that was shown last, also when it has gone: some presses come late.
+ (id)pressAction:(NSDictionary*)asked {
    UNNotification* notification = [[UNNotification alloc] init];
    [notification setRequest:shown];
    UNNotificationResponse* response = [[UNNotificationResponse alloc] init];
    [response setNotification:notification];
    [response setActionIdentifier:asked[@"action"]];
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    [[center delegate] userNotificationCenter:center
               didReceiveNotificationResponse:response
                        withCompletionHandler:^{
                        }];
    return nil;
}

@end
