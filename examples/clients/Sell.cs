// Sells over frserver, to copy from: .NET 8, System.Net.Http alone.
// The id is kept where the sale itself is kept, before the first attempt: after any failure it is the same again.

using System.Net.Http.Headers;
using System.Text;
using System.Text.Json.Nodes;

public sealed class NotIssued(string why) : Exception(why);      // the same id may be posted again, also corrected
public sealed class NeedsPerson(string why) : Exception(why);    // nobody knows: look at the register's tape

public sealed class FiscalService(Uri url, string? token = null)
{
    private static readonly TimeSpan Pause = TimeSpan.FromSeconds(2);
    private readonly HttpClient _client = new() { BaseAddress = url, Timeout = TimeSpan.FromSeconds(45) };

    /// Any 5xx, time-out or answer that is not ours: the same id again; otherwise state decides.
    public async Task<JsonObject> SellAsync(string register, string id, JsonObject receipt, TimeSpan patience)
    {
        for (var end = DateTime.UtcNow + patience; DateTime.UtcNow < end;)
        {
            var (status, said) = await PostAsync(register, id, receipt);
            if (status == 0 || status >= 500 || status == 429 || said is null)
            {
                await Task.Delay(Pause);
                continue;
            }
            switch ((string?)said["state"])
            {
                case "issued": return said;
                case "queued" or "running": continue;
                case "unknown": throw new NeedsPerson((string?)said["detail"] ?? "unknown");
                default: throw new NotIssued((said["errors"] ?? said["error"] ?? said).ToJsonString());
            }
        }
        throw new NeedsPerson("no answer: ask again with the same id");
    }

    private async Task<(int, JsonObject?)> PostAsync(string register, string id, JsonObject receipt)
    {
        using var request = new HttpRequestMessage(
            HttpMethod.Post, $"/v1/registers/{Uri.EscapeDataString(register)}/documents");
        request.Content = new StringContent(receipt.ToJsonString(), Encoding.UTF8, "application/json");
        request.Headers.Add("Idempotency-Key", id);
        request.Headers.Add("Prefer", "wait=30");
        if (token is not null)
            request.Headers.Authorization = new AuthenticationHeaderValue("Bearer", token);
        try
        {
            using var answer = await _client.SendAsync(request);
            var text = await answer.Content.ReadAsStringAsync();
            var said = JsonNode.Parse(text) as JsonObject;
            // What a proxy says of its own is no news of the document.
            var isProblem = answer.Content.Headers.ContentType?.MediaType == "application/problem+json";
            return ((int)answer.StatusCode, isProblem || said?["state"] is not null ? said : null);
        }
        catch (Exception failure) when (failure is HttpRequestException or TaskCanceledException
                                            or System.Text.Json.JsonException)
        {
            return (0, null);
        }
    }
}
